// Assertion failures and fatal errors. Where the report goes is chosen once per process by ORBA_ASSERT:
// "stderr", "popup", or any other value as a file to append to. A fatal report ends the process with
// status 1 (status 2 when a second report arrives while the first is being made).
#pragma once

#include <cstdio>

struct utAssertHooks {
    // Either hook, when set, takes an assertion failure completely and the process goes on.
    void (*full)(utAssertHooks* hooks, const char* file, int line, const char* message) = nullptr;
    void (*plain)(const char* file, int line, const char* message) = nullptr;
};

// The process-wide hooks; empty at start-up.
utAssertHooks& utAssertionHooks();

// Reports a broken invariant of our own: through a hook if one is set, else fatally.
void utAssertionFailed(const char* file, int line, const char* message);

// Reports and ends the process. Returns only when re-entered in pop-up mode.
void utFatal(bool assertion, std::FILE* stream, const char* prefix, const char* file, int line, const char* message);

#define UT_ASSERT(cond)                                                                                                \
    do {                                                                                                               \
        if (!(cond))                                                                                                   \
            utAssertionFailed(__FILE__, __LINE__, #cond);                                                              \
    } while (0)
