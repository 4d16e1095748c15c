// The command line as Quillon reads it: "help", "logfile:<path>", other switches, and a file to open.
#pragma once

#include <string>
#include <vector>

#include "foundation/utString.h"

class qwzCommandLine
{
public:
    enum Mode { None, Help, OpenFile, UnknownSwitch };

    // One word, its leading "-" or "/" already removed and reported in isSwitch. The keywords are
    // compared exactly and do not look at isSwitch: the plain word "help" counts as the switch.
    void parseParam(const utString& word, bool isSwitch, bool isLast);

    // Every word of a command line split the Windows way, the program's own name left out.
    void parse(const std::vector<std::string>& words);

    Mode mode = None;
    utString logFile = utString::copyOf("");
    utString fileName = utString::copyOf(""); // the document named on the command line
};
