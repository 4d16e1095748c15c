// The child of SafeSaveTest.AProcessKilledBetweenTheStepsKeepsTheOriginal: saves a text to a file, signals
// the test's event once the temporary file is flushed, and waits there until the test kills it.
//   safeSaveChild.exe TARGET TEXT EVENT
#include <windows.h>

#include <string>

#include "win/winSafeSave.h"
#include "win/winText.h"

namespace
{

HANDLE flushed = nullptr;

DWORD stopAfterTheFlush(winSafeSave::Point point, const std::wstring&)
{
    if (point == winSafeSave::Point::TempFlushed) {
        SetEvent(flushed);
        Sleep(INFINITE);
    }
    return ERROR_SUCCESS;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    if (argc != 4)
        return 2;
    flushed = OpenEventW(EVENT_MODIFY_STATE, FALSE, argv[3]);
    if (!flushed)
        return 3;
    winSafeSave::setTestHook(stopAfterTheFlush);
    winSafeSave::write(argv[1], winText::toUtf8(argv[2]));
    return 4; // the save went past the flush: the test sees that the event never came
}
