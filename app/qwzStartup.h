// The start-up steps that need no window: the installation tree, the product file, the catalogs, the
// command line and the usage text. The application object runs them after its framework setup and
// before its first window, the catalogs' directory already set; a command-line run ends here.
#pragma once

#include <string>
#include <vector>

#include "app/qwzCommandLine.h"
#include "document/qwzOutput.h"

class qwzStartup
{
public:
    enum Outcome { OpenWindow, Quit };

    // Runs the steps in order on the words of the command line (the program's name left out). A failure
    // has been shown to the user when this returns Quit with a non-zero exitCode.
    Outcome run(const std::vector<std::string>& words, int& exitCode);

    const qwzCommandLine& commandLine() const
    {
        return line;
    }

private:
    qwzCommandLine line;
};

// Writes the usage text through a channel, every line translated.
void printUsage(qwzOutput& output);

// Writes the usage text to the command line's log file (truncated, no CR added), or to standard output.
void writeUsage(const qwzCommandLine& line);
