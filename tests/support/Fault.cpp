#include "support/Fault.h"

#include <atomic>
#include <cerrno>
#include <cstdio>

#include <dlfcn.h>
#include <pthread.h>
#include <unistd.h>

namespace {

std::atomic<int> failing = -1;  ///< the sort
std::size_t first = 0;
bool onlyOne = false;
std::atomic<std::size_t> calls = 0;
std::atomic<bool> struck = false;

/// Counts a call. True if it is to fail.
bool fails(Fault::Sort sort) {
    if (failing != static_cast<int>(sort)) {
        return false;
    }
    const std::size_t number = calls++;
    const bool is = onlyOne ? number == first : number >= first;
    struck = struck || is;
    return is;
}

/// The function of the system that stands behind one of this file.
template <typename Function>
Function* systems(Function* /*ours*/, const char* name) {
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

/// Calls a function of the system, or does not and fails with `error`.
template <typename Function, typename... Arguments>
auto output(Function* ours, const char* name, int error, Arguments... arguments) {
    if (fails(Fault::Sort::Output)) {
        errno = error;
        return decltype(ours(arguments...)){-1};
    }
    return systems(ours, name)(arguments...);
}

}  // namespace

Fault::Fault(Sort sort, std::size_t number, bool laterToo) {
    calls = 0;
    struck = false;
    first = number;
    onlyOne = !laterToo;
    failing = static_cast<int>(sort);
}

Fault::~Fault() {
    failing = -1;
}

bool Fault::hasStruck() const {
    return struck;
}

extern "C" {

ssize_t write(int file, const void* bytes, std::size_t size) {
    return output(&::write, "write", ENOSPC, file, bytes, size);
}
int fsync(int file) {
    return output(&::fsync, "fsync", EIO, file);
}
int rename(const char* from, const char* to) noexcept {
    return output(&::rename, "rename", EIO, from, to);
}
int linkat(int from, const char* name, int to, const char* newName, int flags) noexcept {
    return output(&::linkat, "linkat", ENOSPC, from, name, to, newName, flags);
}
/// Closes the file even if it fails, as the system does.
int close(int file) {
    const int result = systems(&::close, "close")(file);
    return fails(Fault::Sort::Output) ? (errno = EIO, -1) : result;
}

#ifdef SANITIZED
// A sanitizer has to know of every thread.
int __interceptor_pthread_create(pthread_t*, const pthread_attr_t*, void* (*)(void*), void*);
#endif

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* argument) noexcept {
    if (fails(Fault::Sort::Thread)) {
        return EAGAIN;
    }
#ifdef SANITIZED
    return __interceptor_pthread_create(thread, attributes, run, argument);
#else
    return systems(&::pthread_create, "pthread_create")(thread, attributes, run, argument);
#endif
}

#ifndef SANITIZED
// operator new calls malloc. A sanitizer has both of its own, so that no memory fault strikes
// there.
// NOLINTBEGIN(clang-diagnostic-reserved-identifier,readability-identifier-naming)
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
// NOLINTEND(clang-diagnostic-reserved-identifier,readability-identifier-naming)

void* malloc(std::size_t size) noexcept {
    return fails(Fault::Sort::Memory) ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) noexcept {
    return fails(Fault::Sort::Memory) ? nullptr : __libc_calloc(count, size);
}
void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return fails(Fault::Sort::Memory) ? nullptr : __libc_memalign(alignment, size);
}
#endif

}  // extern "C"
