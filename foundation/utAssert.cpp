// Fatal reports: one formatting, one choice of destination, one way out.
#include "foundation/utAssert.h"

#include <cstdlib>
#include <cstring>
#include <string>

#include "foundation/utTextConversion.h"
#include "platform/platform.h"

namespace
{

enum Mode { Unset = 0, Popup = 1, File = 2, Stream = 3 };

int reportMode = Unset;

} // namespace

utAssertHooks& utAssertionHooks()
{
    static utAssertHooks hooks;
    return hooks;
}

void utAssertionFailed(const char* file, int line, const char* message)
{
    utAssertHooks& hooks = utAssertionHooks();
    if (hooks.full)
        hooks.full(&hooks, file, line, message);
    else if (hooks.plain)
        hooks.plain(file, line, message);
    else
        utFatal(true, stderr, "Assertion failure:", file, line, message);
}

void utFatal(bool assertion, std::FILE* stream, const char* prefix, const char* file, int line, const char* message)
{
    if (reportMode != Unset) {
        // a report raised while the first one is made, or from an exit handler
        if (reportMode == Popup) {
            platform::debugBreak();
            reportMode = Unset;
            return;
        }
        // at once: no exit handler may run into the same failure again
        std::_Exit(2);
    }

    char report[1024];
    std::snprintf(report, sizeof report, "%s %s\nFile: %s Line: %d\n", prefix ? prefix : "", message ? message : "",
                  file ? file : "", line);

    reportMode = assertion ? Popup : Stream;
    const char* choice = std::getenv("ORBA_ASSERT");
    if (choice) {
        if (std::strcmp(choice, "stderr") == 0)
            reportMode = Stream;
        else if (std::strcmp(choice, "popup") == 0)
            reportMode = Popup;
        else
            reportMode = File;
    }

    if (reportMode == File) {
        // a UTF-8 name, as every file name of the program
        if (std::FILE* f = utOpenFile(choice, "a+b")) {
            std::fputs(report, f);
            std::fclose(f);
        }
    } else if (reportMode == Stream) {
        std::FILE* out = stream ? stream : stderr;
        std::fputs(report, out);
        std::fflush(out);
    } else {
        platform::messageBox(report, "Fatal Error", platform::BoxIcon::Error);
    }
    std::exit(1);
}
