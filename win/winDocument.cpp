// Document flows: new, open, save, save as, and the save prompt. Every save goes through winSafeSave.
#include "win/winDocument.h"

#include "win/winEditView.h"
#include "win/winHandles.h"
#include "win/winIds.h"
#include "win/winServices.h"
#include "win/winText.h"
#include "win/winViewHost.h"

#include <memory>

namespace
{

std::wstring fileNameOf(const std::wstring& path)
{
    size_t cut = path.find_last_of(L"\\/:");
    return cut == std::wstring::npos ? path : path.substr(cut + 1);
}

// Reads a whole file; false with the system's error set on failure.
bool readWholeFile(const std::wstring& path, std::string& bytes)
{
    HANDLE h = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                           FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (h == INVALID_HANDLE_VALUE)
        return false;
    winHandle file(h);
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(h, &size) || size.QuadPart < 0 || size.QuadPart > 0x7FFFFFFF)
        return false;
    bytes.assign(size_t(size.QuadPart), '\0');
    size_t done = 0;
    while (done < bytes.size()) {
        DWORD got = 0;
        if (!ReadFile(h, bytes.data() + done, DWORD(bytes.size() - done), &got, nullptr))
            return false;
        if (got == 0)
            break;
        done += got;
    }
    bytes.resize(done);
    return true;
}

} // namespace

void winDocument::setTitle(const std::wstring& title)
{
    title_ = title;
    if (frame_)
        frame_->updateTitle();
}

void winDocument::setPathName(const std::wstring& path, bool addToRecentFiles)
{
    pathName_ = winSafeSave::fullPath(path);
    setTitle(fileNameOf(pathName_));
    if (addToRecentFiles)
        if (services_)
            services_->addToRecentFileList(pathName_);
}

bool winDocument::onNewDocument()
{
    pathName_.clear();
    if (view_)
        view_->setText(L"");
    modified_ = false;
    setTitle(winText::load(WIN_IDS_UNTITLED));
    return true;
}

bool winDocument::onOpenDocument(const std::wstring& path)
{
    std::string bytes;
    if (!readWholeFile(path, bytes) || !deserialize(bytes)) {
        if (services_)
            services_->messageBox(winText::formatId(WIN_IDS_OPEN_FAILED, {path}), MB_OK | MB_ICONERROR);
        return false;
    }
    modified_ = false;
    return true;
}

bool winDocument::onSaveDocument(const std::wstring& path)
{
    std::string bytes;
    serialize(bytes);
    if (!writeFileReporting(path, bytes))
        return false;
    modified_ = false;
    return true;
}

void winDocument::serialize(std::string& bytes)
{
    bytes = view_ ? winText::toUtf8(view_->text()) : std::string();
}

bool winDocument::deserialize(const std::string& bytes)
{
    // the control ends its text at the first NUL: refuse rather than show a silently cut file
    if (!view_ || bytes.find('\0') != std::string::npos)
        return false;
    std::wstring text = winText::fromUtf8(bytes);
    return (text.empty() == bytes.empty()) && view_->setText(text);
}

std::wstring winDocument::saveErrorText(const std::wstring& path, const winSaveResult& result)
{
    if (!result.originalKeptAs.empty())
        return winText::formatId(WIN_IDS_SAVE_KEPT_BOTH, {path, result.originalKeptAs, result.newKeptAs});
    switch (result.error) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return winText::formatId(WIN_IDS_SAVE_DISK_FULL, {path});
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_UNABLE_TO_REMOVE_REPLACED:
    case ERROR_USER_MAPPED_FILE:
        return winText::formatId(WIN_IDS_SAVE_ACCESS, {path});
    default:
        return winText::load(WIN_IDS_SAVE_FAILED);
    }
}

bool winDocument::writeFileReporting(const std::wstring& path, const std::string& bytes)
{
    winSaveResult result = winSafeSave::write(path, bytes);
    if (result.ok)
        return true;
    if (services_)
        services_->messageBox(saveErrorText(path, result), MB_OK | MB_ICONERROR);
    return false;
}

bool winDocument::saveModified()
{
    if (!modified_)
        return true;
    if (!services_)
        return true;
    std::wstring name = pathName_.empty() ? title_ : pathName_;
    switch (
        services_->messageBox(winText::formatId(WIN_IDS_SAVE_CHANGES, {name}), MB_YESNOCANCEL | MB_ICONEXCLAMATION)) {
    case IDYES:
        return doFileSave();
    case IDNO:
        return true;
    default:
        return false;
    }
}

bool winDocument::doFileSave()
{
    DWORD attributes = pathName_.empty() ? INVALID_FILE_ATTRIBUTES : GetFileAttributesW(pathName_.c_str());
    if (pathName_.empty() || (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)))
        return doSave(std::wstring());
    return doSave(pathName_);
}

winDocument::SaveChoice winDocument::confirmSave(const std::wstring&)
{
    return SaveChoice::Write;
}

bool winDocument::isSameFile(const std::wstring& a, const std::wstring& b)
{
    if (a.empty() || b.empty())
        return false;
    std::wstring fullA = winSafeSave::fullPath(a), fullB = winSafeSave::fullPath(b);
    return CompareStringOrdinal(fullA.c_str(), int(fullA.size()), fullB.c_str(), int(fullB.size()), TRUE) == CSTR_EQUAL;
}

bool winDocument::doSave(const std::wstring& path, bool replacePath)
{
    std::wstring target = path;
    for (;;) {
        if (target.empty()) {
            target = pathName_.empty() ? title_ : pathName_;
            if (!services_ || !services_->promptFileName(false, target))
                return false;
        }
        SaveChoice choice = confirmSave(target);
        if (choice == SaveChoice::Cancel)
            return false;
        if (choice == SaveChoice::Write)
            break;
        target.clear();
    }
    if (!onSaveDocument(target))
        return false;
    if (replacePath)
        setPathName(target);
    return true;
}

winCommandTable<winDocument> winDocument::commands()
{
    static const winCommand<winDocument> table[] = {
        {ID_FILE_SAVE, [](winDocument& document, unsigned) { document.doFileSave(); }},
        {ID_FILE_SAVE_AS, [](winDocument& document, unsigned) { document.doSave(std::wstring()); }},
    };
    return table;
}

bool winDocument::onCommand(unsigned id)
{
    return winRunCommand(commands(), *this, id);
}

bool winDocument::onUpdateCommand(unsigned id, winCommandState& state)
{
    return winUpdateCommand(commands(), *this, id, state);
}
