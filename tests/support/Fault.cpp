// The hardened headers would define functions of this file themselves.
#undef _FORTIFY_SOURCE  // NOLINT(clang-diagnostic-reserved-macro-identifier)

#include "support/Fault.h"

#include <algorithm>
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

/// Reads or writes, or does a part of it, or is interrupted.
template <typename Function, typename Bytes, typename... Place>
ssize_t inParts(Function* ours, const char* name, int file, Bytes* bytes, std::size_t size,
                Place... place) {
    if (failing == static_cast<int>(Fault::Sort::Parts)) {
        if (const std::size_t number = calls++; number % 3 == 0) {
            errno = EINTR;
            return -1;
        }
        size = std::min<std::size_t>(size, 5000);
    }
    return systems(ours, name)(file, bytes, size, place...);
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
    return failing == static_cast<int>(Fault::Sort::Parts)
               ? inParts(&::write, "write", file, bytes, size)
               : output(&::write, "write", ENOSPC, file, bytes, size);
}
ssize_t read(int file, void* bytes, std::size_t size) {
    return inParts(&::read, "read", file, bytes, size);
}
ssize_t pread(int file, void* bytes, std::size_t size, off_t offset) {
    return inParts(&::pread, "pread", file, bytes, size, offset);
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
