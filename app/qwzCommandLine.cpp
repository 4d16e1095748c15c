// Command-line parsing. The first keyword that applies decides; an unknown switch is never undone.
#include "app/qwzCommandLine.h"

#include <cstring>

void qwzCommandLine::parseParam(const utString& word, bool isSwitch, bool)
{
    const char* text = word.c_str();
    if (std::strcmp(text, "help") == 0) {
        if (mode != UnknownSwitch)
            mode = Help;
    } else if (std::strncmp(text, "logfile", 7) == 0) {
        const char* colon = std::strchr(text, ':');
        utString value = utString::copyOf(colon ? colon + 1 : "");
        if (value.length() >= 2 && value.text()[0] == '"' && value.text()[value.length() - 1] == '"')
            value = value.substring(1, value.length() - 2);
        logFile = value;
    } else if (isSwitch) {
        mode = UnknownSwitch;
    } else if (fileName.isEmpty()) {
        // as a Windows program does: the first plain word is the document to open
        fileName = utString::copyOf(text);
        mode = OpenFile;
    }
}

void qwzCommandLine::parse(const std::vector<std::string>& words)
{
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& w = words[i];
        bool isSwitch = !w.empty() && (w[0] == '-' || w[0] == '/');
        parseParam(utString::copyOf(isSwitch ? w.substr(1) : w), isSwitch, i + 1 == words.size());
    }
}
