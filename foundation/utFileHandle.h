// The owner of a C file that utOpenFile (or fopen) opened: every such file is closed once, on every path.
#pragma once

#include <cstdio>
#include <memory>

struct utFileCloser {
    void operator()(std::FILE* f) const
    {
        std::fclose(f);
    }
};
using utFileHandle = std::unique_ptr<std::FILE, utFileCloser>;
