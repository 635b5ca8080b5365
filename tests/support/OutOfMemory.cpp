#include "support/OutOfMemory.h"

#include <cstdlib>
#include <new>

namespace {

thread_local bool runsOut = false;
thread_local bool hasRunOut = false;
thread_local std::size_t left = 0;

void* allocate(std::size_t size) noexcept {
    if (runsOut && left == 0) {
        hasRunOut = true;
        return nullptr;
    }
    left -= runsOut ? 1 : 0;
    return std::malloc(size == 0 ? 1 : size);  // NOLINT(*-no-malloc)
}

}  // namespace

OutOfMemory::OutOfMemory(std::size_t allocations) {
    left = allocations;
    hasRunOut = false;
    runsOut = true;
}

OutOfMemory::~OutOfMemory() {
    runsOut = false;
}

bool OutOfMemory::hasFailed() const {
    return hasRunOut;
}

void* operator new(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

// The sanitizers have their own, which would not call the operator above.
void* operator new[](std::size_t size) {
    return operator new(size);
}
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return allocate(size);
}
void operator delete(void* memory) noexcept {
    std::free(memory);  // NOLINT(*-no-malloc)
}
void operator delete(void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}
void operator delete[](void* memory) noexcept {
    operator delete(memory);
}
void operator delete[](void* memory, std::size_t /*size*/) noexcept {
    operator delete(memory);
}
