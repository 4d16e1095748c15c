// What the command line asks the framework to do at start-up: a new document (the default), the
// opening of a named file, or nothing. Subclasses read their own words in parseParam.
#pragma once

#include <string>
#include <vector>

class winCommandLineInfo
{
public:
    enum ShellCommand { FileNew, FileOpen, FileNothing };

    virtual ~winCommandLineInfo() = default;

    // Called once per command-line word, in order; a leading "-" or "/" has been removed and reported in
    // `isSwitch`. The default takes the first plain word as the file to open and ignores switches.
    virtual void parseParam(const std::wstring& param, bool isSwitch, bool isLast);

    // Feeds `args` (the words after the program name) to parseParam.
    void parse(const std::vector<std::wstring>& args);

    // The words of this process's command line after the program name.
    static std::vector<std::wstring> processArguments();

    ShellCommand shellCommand = FileNew;
    std::wstring fileName;
};
