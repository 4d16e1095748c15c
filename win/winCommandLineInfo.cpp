// Command-line words to the start-up action.
#include "win/winCommandLineInfo.h"

#include "win/winHandles.h"

#include <windows.h>

#include <shellapi.h>

void winCommandLineInfo::parseParam(const std::wstring& param, bool isSwitch, bool)
{
    if (isSwitch || !fileName.empty())
        return;
    fileName = param;
    shellCommand = FileOpen;
}

void winCommandLineInfo::parse(const std::vector<std::wstring>& args)
{
    for (size_t i = 0; i < args.size(); ++i) {
        const std::wstring& word = args[i];
        bool isSwitch = !word.empty() && (word[0] == L'-' || word[0] == L'/');
        parseParam(isSwitch ? word.substr(1) : word, isSwitch, i + 1 == args.size());
    }
}

std::vector<std::wstring> winCommandLineInfo::processArguments()
{
    std::vector<std::wstring> out;
    int count = 0;
    winLocal<LPWSTR> argv(CommandLineToArgvW(GetCommandLineW(), &count));
    if (!argv)
        return out;
    for (int i = 1; i < count; ++i)
        out.emplace_back(argv.get()[i]);
    return out;
}
