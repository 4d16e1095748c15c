// Start-up without a window. Every failure the user must see goes through one translated message box.
#include "app/qwzStartup.h"

#include <iostream>

#include "app/qwzAppCatalog.h"
#include "app/qwzInstallDir.h"
#include "app/qwzVersionInfo.h"
#include "document/qwzStreamOutput.h"
#include "foundation/ubOFStream.h"
#include "platform/platform.h"
#include "resourceIds.h"

namespace
{

void showError(unsigned id)
{
    platform::messageBox(translate(platform::loadString(id).c_str()).str(),
                         translate(platform::loadString(AFX_IDS_APP_TITLE).c_str()).str(), platform::BoxIcon::Error);
}

} // namespace

qwzStartup::Outcome qwzStartup::run(const std::vector<std::string>& words, int& exitCode)
{
    exitCode = 0;
    const utString& root = qwzInstallRoot();
    if (root.isNull()) {
        showError(IDS_NO_INSTALL_DIR);
        exitCode = 1;
        return Quit;
    }
    qwzVersionInfo::instance().readProductFile(installDir(Install, root));
    // the catalogs' directory was set by the application before its first translation
    qwzTheAppCatalog().start();

    line.parse(words);
    if (line.mode == qwzCommandLine::Help || line.mode == qwzCommandLine::UnknownSwitch) {
        writeUsage(line);
        return Quit;
    }
    return OpenWindow;
}

void printUsage(qwzOutput& output)
{
    static const unsigned lines[] = {IDS_USAGE,           IDS_USAGE_RUN,  IDS_USAGE_RUN_HELP, IDS_USAGE_FILE,
                                     IDS_USAGE_FILE_HELP, IDS_USAGE_HELP, IDS_USAGE_HELP_HELP};
    for (unsigned id : lines)
        output.printMessage(0, id);
}

void writeUsage(const qwzCommandLine& line)
{
    if (line.logFile.isEmpty()) {
        printUsage(qwzStreamOutput::standardOutput());
        std::cout.flush();
        return;
    }
    // a log file that cannot be opened loses the text, as a redirected console would
    ubOFStream file(line.logFile.c_str(), std::ios_base::out | std::ios_base::binary);
    qwzStreamOutput channel(&file);
    printUsage(channel);
}
