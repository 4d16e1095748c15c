// Paths and scratch files for tests. Data made at build time (catalogs by msgfmt, fixtures) and every
// scratch file lie under the build's test data folder, compiled in: a test program started by hand from
// any folder writes nothing there. Under Wine the Unix paths are handed over as Z: drive paths.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace qt
{

// A Unix path as the program under test must see it: unchanged natively, "Z:\..." on Windows.
std::string hostPath(const std::string& unixPath);

// A file or folder below the build's test data directory (made by the build, read-only for tests).
std::string dataPath(const std::string& relative);

// A file or folder below the source tree.
std::string sourcePath(const std::string& relative);

// A fresh, empty directory of the running test's own; removed by the test's next call with the same name.
std::string scratchDir(const std::string& name);

// Whole-file helpers over the C library, so that tests never depend on the code they test.
std::string readFile(const std::string& path);
void writeFile(const std::string& path, const std::string& bytes);
bool fileExists(const std::string& path);

// Environment variables changed for one test: each gets back the value it had before when the owner goes,
// so that a failed assertion cannot leave them to the tests after it.
class ScopedEnv
{
public:
    ScopedEnv() = default;
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;
    ~ScopedEnv();

    // Sets or (with nullptr) unsets `name` until this owner goes.
    void set(const char* name, const char* value);

private:
    std::vector<std::pair<std::string, std::optional<std::string>>> saved_;
};

} // namespace qt
