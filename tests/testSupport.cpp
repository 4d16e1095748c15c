// Test helpers built on the C library and the OS directly, never on the code under test.
#include "testSupport.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include <gtest/gtest.h>

namespace fs = std::filesystem;

namespace qt
{

std::string hostPath(const std::string& unixPath)
{
#ifdef _WIN32
    if (!unixPath.empty() && unixPath[0] == '/') {
        std::string p = "Z:" + unixPath;
        for (char& c : p)
            if (c == '/')
                c = '\\';
        return p;
    }
#endif
    return unixPath;
}

std::string dataPath(const std::string& relative)
{
    return hostPath(std::string(QUILLON_TEST_DATA_DIR) + "/" + relative);
}

std::string sourcePath(const std::string& relative)
{
    return hostPath(std::string(QUILLON_SOURCE_TREE) + "/" + relative);
}

std::string scratchDir(const std::string& name)
{
    // a folder of the running test's own: ctest runs the native tests in parallel processes
    fs::path dir = fs::path(dataPath("scratch"));
    if (const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info())
        dir /= std::string(test->test_suite_name()) + "." + test->name();
    dir /= name;
    std::error_code ec;
    fs::remove_all(dir, ec);
    fs::create_directories(dir);
    return dir.string();
}

std::string readFile(const std::string& path)
{
    std::FILE* f = std::fopen(path.c_str(), "rb");
    if (!f)
        throw std::runtime_error("cannot read " + path);
    std::string bytes;
    char buf[65536];
    size_t n;
    while ((n = std::fread(buf, 1, sizeof buf, f)) > 0)
        bytes.append(buf, n);
    std::fclose(f);
    return bytes;
}

void writeFile(const std::string& path, const std::string& bytes)
{
    std::FILE* f = std::fopen(path.c_str(), "wb");
    if (!f)
        throw std::runtime_error("cannot write " + path);
    std::fwrite(bytes.data(), 1, bytes.size(), f);
    std::fclose(f);
}

bool fileExists(const std::string& path)
{
    std::error_code ec;
    return fs::exists(path, ec);
}

namespace
{

void setEnv(const char* name, const char* value)
{
#ifdef _WIN32
    _putenv_s(name, value ? value : "");
#else
    if (value)
        ::setenv(name, value, 1);
    else
        ::unsetenv(name);
#endif
}

} // namespace

ScopedEnv::~ScopedEnv()
{
    for (auto it = saved_.rbegin(); it != saved_.rend(); ++it)
        setEnv(it->first.c_str(), it->second ? it->second->c_str() : nullptr);
}

void ScopedEnv::set(const char* name, const char* value)
{
    bool seen = false;
    for (const auto& [savedName, _] : saved_)
        seen = seen || savedName == name;
    if (!seen) {
        const char* before = std::getenv(name);
        saved_.emplace_back(name, before ? std::optional<std::string>(before) : std::nullopt);
    }
    setEnv(name, value);
}

} // namespace qt
