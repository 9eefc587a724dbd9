// The few POSIX calls the tests use, on Windows too (the Windows suite runs under Wine):
// setenv, unsetenv, mkdtemp, getpid, localtime_r.
#pragma once

#include <stdlib.h>

#ifdef _WIN32
#include <direct.h>
#include <process.h>
#include <string.h>
#include <time.h>

// The C runtime's environment, which getenv reads. An empty value removes the variable: the
// C runtime of Windows cannot hold an empty one.
inline int setenv(const char* name, const char* value, int overwrite)
{
    if (!overwrite && getenv(name) != nullptr) return 0;
    return _putenv_s(name, value);
}

inline int unsetenv(const char* name) { return _putenv_s(name, ""); }

inline char* mkdtemp(char* pattern)
{
    if (_mktemp_s(pattern, strlen(pattern) + 1) != 0) return nullptr;
    return _mkdir(pattern) == 0 ? pattern : nullptr;
}
#ifndef _POSIX_THREAD_SAFE_FUNCTIONS
inline tm* localtime_r(const time_t* time, tm* local) { return localtime_s(local, time) == 0 ? local : nullptr; }
#endif
#else
#include <unistd.h>
#endif
