// A disk that fills up: while a DiskFullAfter object lives, no file of the process can grow past
// the given size, so a write beyond it fails as on a full disk (the size-limit signal is
// ignored, so the write just returns an error).
// A test that needs one starts with VORNADEL_NEEDS_DISK_FULL(): Windows has no file-size limit,
// so there the test is skipped, saying why.
#pragma once

#include <stddef.h>

#ifdef _WIN32

#include <gtest/gtest.h>

#define VORNADEL_NEEDS_DISK_FULL() \
    GTEST_SKIP() << "a full disk is made with a file-size limit (setrlimit), which Windows does not have"

namespace vornadel_test {

class DiskFullAfter {
public:
    explicit DiskFullAfter(size_t) {}
};

}  // namespace vornadel_test

#else

#include <signal.h>
#include <sys/resource.h>

#define VORNADEL_NEEDS_DISK_FULL() static_cast<void>(0)

namespace vornadel_test {

class DiskFullAfter {
public:
    explicit DiskFullAfter(size_t bytes)
    {
        struct sigaction ignore = {};
        ignore.sa_handler = SIG_IGN;
        sigaction(SIGXFSZ, &ignore, &previousAction_);
        getrlimit(RLIMIT_FSIZE, &previousLimit_);
        struct rlimit limit = previousLimit_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~DiskFullAfter()
    {
        setrlimit(RLIMIT_FSIZE, &previousLimit_);
        sigaction(SIGXFSZ, &previousAction_, nullptr);
    }
    DiskFullAfter(const DiskFullAfter&) = delete;
    DiskFullAfter& operator=(const DiskFullAfter&) = delete;

private:
    struct sigaction previousAction_ = {};
    struct rlimit previousLimit_ = {};
};

}  // namespace vornadel_test

#endif
