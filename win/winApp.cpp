// The application object: message loop, application commands and the framework's user-interface seams.
#include "win/winApp.h"

#include "win/winCommandLineInfo.h"
#include "win/winDocTemplate.h"
#include "win/winDocument.h"
#include "win/winFrame.h"
#include "win/winIds.h"
#include "win/winRecentFiles.h"

#include <commdlg.h>

#include <algorithm>

namespace
{

std::wstring executableBaseName()
{
    wchar_t path[MAX_PATH + 1] = {};
    DWORD n = GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring name(path, n);
    size_t cut = name.find_last_of(L"\\/");
    if (cut != std::wstring::npos)
        name.erase(0, cut + 1);
    size_t dot = name.rfind(L'.');
    if (dot != std::wstring::npos)
        name.erase(dot);
    return name;
}

} // namespace

winApp::winApp() = default;

winApp::~winApp()
{
    template_.reset();
}

int winApp::winMain(int showCommand)
{
    showCommand_ = showCommand;
    if (initInstance())
        run();
    return exitInstance();
}

bool winApp::initInstance()
{
    return true;
}

int winApp::exitInstance()
{
    return exitCode_;
}

int winApp::run()
{
    MSG msg;
    for (;;) {
        for (long idle = 0; !PeekMessageW(&msg, nullptr, 0, 0, PM_NOREMOVE);)
            if (!onIdle(idle++))
                break;
        BOOL got = GetMessageW(&msg, nullptr, 0, 0);
        if (got == 0 || got == -1) {
            exitCode_ = got == 0 ? int(msg.wParam) : -1;
            return exitCode_;
        }
        if (!preTranslateMessage(msg)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
}

bool winApp::pumpMessages()
{
    MSG msg;
    while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            exitCode_ = int(msg.wParam);
            return false;
        }
        if (!preTranslateMessage(msg)) {
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    return true;
}

bool winApp::preTranslateMessage(MSG& msg)
{
    for (HWND dialog : modeless_)
        if (IsWindow(dialog) && IsDialogMessageW(dialog, &msg))
            return true;
    winFrame* frame = mainFrame();
    if (!frame || !frame->hwnd() || !frame->accelerators())
        return false;
    if (msg.hwnd != frame->hwnd() && !IsChild(frame->hwnd(), msg.hwnd))
        return false;
    return TranslateAcceleratorW(frame->hwnd(), frame->accelerators(), &msg) != 0;
}

bool winApp::onIdle(long count)
{
    // once per idle spell: the bars follow what the last messages changed
    if (winFrame* frame = mainFrame(); count == 0 && frame && frame->hwnd())
        frame->onIdleUpdate();
    return false;
}

void winApp::addModelessDialog(HWND dialog)
{
    if (dialog && std::find(modeless_.begin(), modeless_.end(), dialog) == modeless_.end())
        modeless_.push_back(dialog);
}

void winApp::removeModelessDialog(HWND dialog)
{
    modeless_.erase(std::remove(modeless_.begin(), modeless_.end(), dialog), modeless_.end());
}

void winApp::setTranslator(winText::Translator translator)
{
    winText::setTranslator(translator);
}

std::wstring winApp::translate(const std::wstring& english)
{
    return winText::translate(english);
}

std::wstring winApp::appName() const
{
    if (!appName_.empty())
        return appName_;
    std::wstring title = winText::loadRaw(AFX_IDS_APP_TITLE);
    return title.empty() ? executableBaseName() : title;
}

void winApp::setAppName(const std::wstring& name)
{
    appName_ = name;
}

void winApp::setRegistryKey(const std::wstring& company)
{
    company_ = company;
}

std::wstring winApp::profileKey() const
{
    return company_.empty() ? L"Software\\" + appName() : L"Software\\" + company_ + L"\\" + appName();
}

void winApp::loadStdProfileSettings(size_t maxRecentFiles)
{
    recentFiles_ = std::make_unique<winRecentFiles>(profileKey(), maxRecentFiles);
    recentFiles_->load();
}

void winApp::addToRecentFileList(const std::wstring& path)
{
    if (!recentFiles_)
        return;
    recentFiles_->add(path);
    recentFiles_->save();
}

void winApp::addDocTemplate(std::unique_ptr<winDocTemplate> docTemplate)
{
    template_ = std::move(docTemplate);
    if (template_)
        template_->setServices(this);
}

winFrame* winApp::mainFrame() const
{
    return template_ ? template_->frame() : nullptr;
}

winDocument* winApp::document() const
{
    return template_ ? template_->document() : nullptr;
}

void winApp::parseCommandLine(winCommandLineInfo& info)
{
    info.parse(winCommandLineInfo::processArguments());
}

bool winApp::processShellCommand(const winCommandLineInfo& info)
{
    switch (info.shellCommand) {
    case winCommandLineInfo::FileNew:
        return openDocumentFile(std::wstring()) != nullptr;
    case winCommandLineInfo::FileOpen:
        return openDocumentFile(info.fileName) != nullptr;
    default:
        return true;
    }
}

winDocument* winApp::openDocumentFile(const std::wstring& path)
{
    return template_ ? template_->openDocumentFile(path) : nullptr;
}

void winApp::onFileNew()
{
    openDocumentFile(std::wstring());
}

void winApp::onFileOpen()
{
    std::wstring path;
    if (promptFileName(true, path))
        openDocumentFile(path);
}

bool winApp::onFilePrintSetup()
{
    if (!winPrinter::installed()) {
        messageBox(winText::load(WIN_IDS_NO_PRINTER), MB_OK | MB_ICONINFORMATION);
        return false;
    }
    winFrame* frame = mainFrame();
    return printer_.setup(frame ? frame->hwnd() : nullptr) == winPrinter::Answer::Ok;
}

void winApp::openRecentFile(size_t index)
{
    if (!recentFiles_ || index >= recentFiles_->size())
        return;
    std::wstring path = recentFiles_->at(index);
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
        messageBox(winText::formatId(WIN_IDS_RECENT_MISSING, {path}), MB_OK | MB_ICONWARNING);
        recentFiles_->remove(index);
        recentFiles_->save();
        return;
    }
    openDocumentFile(path);
}

winCommandTable<winApp> winApp::commands()
{
    static const winCommand<winApp> table[] = {
        {ID_FILE_NEW, [](winApp& app, unsigned) { app.onFileNew(); }},
        {ID_FILE_OPEN, [](winApp& app, unsigned) { app.onFileOpen(); }},
        {ID_FILE_PRINT_SETUP, [](winApp& app, unsigned) { app.onFilePrintSetup(); }},
        {ID_APP_EXIT,
         [](winApp& app, unsigned) {
             if (winFrame* frame = app.mainFrame(); frame && frame->hwnd())
                 SendMessageW(frame->hwnd(), WM_CLOSE, 0, 0);
         }},
        {ID_FILE_MRU_FILE1, ID_FILE_MRU_LAST,
         [](winApp& app, unsigned id) { app.openRecentFile(id - ID_FILE_MRU_FILE1); },
         [](winApp& app, unsigned id, winCommandState& state) {
             state.enabled = app.recentFiles_ && id - ID_FILE_MRU_FILE1 < app.recentFiles_->size();
         }},
    };
    return table;
}

bool winApp::onCommand(unsigned id)
{
    return winRunCommand(commands(), *this, id);
}

bool winApp::onUpdateCommand(unsigned id, winCommandState& state)
{
    return winUpdateCommand(commands(), *this, id, state);
}

int winApp::messageBox(const std::wstring& text, UINT type, HWND owner)
{
    if (!owner)
        if (winFrame* frame = mainFrame())
            owner = frame->hwnd();
    return MessageBoxW(owner, text.c_str(), appName().c_str(), type);
}

bool winApp::promptFileName(bool open, std::wstring& path)
{
    std::wstring filter = winText::load(WIN_IDS_FILE_FILTER);
    filter += L'\0';
    filter += L"*.*";
    filter += L'\0';
    std::vector<wchar_t> buffer(32768, L'\0');
    std::copy_n(path.begin(), std::min(path.size(), buffer.size() - 1), buffer.begin());
    OPENFILENAMEW ofn = {};
    ofn.lStructSize = sizeof ofn;
    winFrame* frame = mainFrame();
    ofn.hwndOwner = frame ? frame->hwnd() : nullptr;
    ofn.lpstrFilter = filter.c_str();
    ofn.lpstrFile = buffer.data();
    ofn.nMaxFile = DWORD(buffer.size());
    ofn.Flags = OFN_HIDEREADONLY | OFN_PATHMUSTEXIST | OFN_EXPLORER |
                (open ? OFN_FILEMUSTEXIST : OFN_OVERWRITEPROMPT | OFN_NOREADONLYRETURN);
    BOOL ok = open ? GetOpenFileNameW(&ofn) : GetSaveFileNameW(&ofn);
    if (!ok)
        return false;
    path = buffer.data();
    return true;
}
