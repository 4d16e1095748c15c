// The text document. A file is read with one read into a buffer of its size, decoded to UTF-8 (in place
// for UTF-8, into a buffer sized by a counting pass for UTF-16) and rendered in place; the loader converts
// it piece by piece into the edit control's buffer, sized once for the whole text, so the peak stays the
// file plus one UTF-16 copy (plus its UTF-8 for UTF-16).
#include "document/qwzCQuillonDoc.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <string_view>

#include "app/qwzCText.h"
#include "document/qwzCQuillonView.h"
#include "document/qwzEditText.h"
#include "document/qwzPercentRender.h"
#include "document/qwzRecoveryFile.h"
#include "foundation/utFileHandle.h"
#include "foundation/utPath.h"
#include "resourceIds.h"
#include "win/winServices.h"
#include "win/winViewHost.h"

namespace
{

// The whole file in one read; false when it cannot be opened or read. `size` is set whenever known, so
// that an oversized file is refused before anything is allocated.
enum class ReadResult { Ok, Failed, TooLarge };
ReadResult readWhole(const utString& path, std::unique_ptr<char[]>& bytes, std::size_t& size)
{
    utFileHandle file(utOpenFile(path.c_str(), "rb"));
    if (!file || _fseeki64(file.get(), 0, SEEK_END) != 0)
        return ReadResult::Failed;
    long long length = _ftelli64(file.get());
    if (length < 0 || _fseeki64(file.get(), 0, SEEK_SET) != 0)
        return ReadResult::Failed;
    if (static_cast<unsigned long long>(length) > qwzEditText::maxUnits)
        return ReadResult::TooLarge;
    size = static_cast<std::size_t>(length);
    bytes.reset(new (std::nothrow) char[size + 1]);
    if (!bytes)
        return ReadResult::TooLarge;
    if (std::fread(bytes.get(), 1, size, file.get()) != size)
        return ReadResult::Failed;
    bytes[size] = '\0';
    return ReadResult::Ok;
}

// Decodes UTF-16 in pieces into `out`, or only counts with a null `out`; returns the UTF-8 bytes.
std::size_t decodeUtf16(utEncoding encoding, const char* in, std::size_t size, char* out, bool& exact)
{
    constexpr std::size_t piece = 64 * 1024;
    utTextDecoder decoder(encoding);
    std::string part;
    std::size_t used = 0;
    auto take = [&] {
        if (out)
            std::memcpy(out + used, part.data(), part.size());
        used += part.size();
        part.clear();
    };
    for (std::size_t at = 0; at < size; at += piece) {
        decoder.decode(in + at, size - at < piece ? size - at : piece, part);
        take();
    }
    decoder.finish(part);
    take();
    exact = decoder.exact();
    return used;
}

// Puts the file's text as UTF-8, its mark dropped, in place of its bytes; false when memory is short.
bool toUtf8(const utTextProbe& probe, std::unique_ptr<char[]>& bytes, std::size_t& size, bool& exact)
{
    exact = true;
    const char* text = bytes.get() + probe.markLength;
    std::size_t length = size - probe.markLength;
    if (probe.encoding == utEncoding::Utf8 || probe.encoding == utEncoding::Utf8Bom) {
        std::memmove(bytes.get(), text, length);
        size = length;
        bytes[size] = '\0';
        return true;
    }
    std::size_t utf8Size = decodeUtf16(probe.encoding, text, length, nullptr, exact);
    std::unique_ptr<char[]> utf8(new (std::nothrow) char[utf8Size + 1]);
    if (!utf8)
        return false;
    decodeUtf16(probe.encoding, text, length, utf8.get(), exact);
    utf8[utf8Size] = '\0';
    bytes = std::move(utf8);
    size = utf8Size;
    return true;
}

bool isUtf16(utEncoding encoding)
{
    return encoding == utEncoding::Utf16LE || encoding == utEncoding::Utf16BE;
}

// The last bytes that a file watch keeps of a text.
std::string_view lastBytes(const char* bytes, std::size_t size)
{
    std::size_t keep = size < qwzFileWatch::tailSize ? size : qwzFileWatch::tailSize;
    return std::string_view(bytes + (size - keep), keep);
}

} // namespace

qwzCQuillonView* qwzCQuillonDoc::getView() const
{
    return static_cast<qwzCQuillonView*>(view());
}

void qwzCQuillonDoc::setDocumentPath(const utString& path)
{
    if (path.isNull() || path.isEmpty()) {
        winDocument::setPathName(std::wstring(), false);
        setTitle(qwzMessage(IDS_UNTITLED));
        return;
    }
    std::wstring wide = qwzWide(path);
    winDocument::setPathName(wide, false);
    setTitle(wide);
}

void qwzCQuillonDoc::setPathName(const std::wstring& path, bool addToRecentFiles)
{
    if (keepUntitled_) {
        keepUntitled_ = false;
        setDocumentPath(utString());
        return;
    }
    winDocument::setPathName(path, addToRecentFiles);
    // the title is the path exactly as given, not its last component
    setTitle(path);
    // saved under another name: that file is the one to follow now
    if (!path.empty() && !isSameFile(path, qwzWide(watcher_.path()))) {
        bool justSaved = isSameFile(path, qwzWide(saved_.path()));
        watchFile(justSaved ? saved_ : qwzFileWatch(qwzUtf8(path)), !justSaved);
    }
}

void qwzCQuillonDoc::forgetFile()
{
    stopLoading();
    alteredFile_.clear();
    partial_ = false;
    encoding_ = utEncoding::Utf8;
    utf16WithoutMark_ = false;
    // the template asked about the old text first: it was saved or given up
    if (recovery_)
        recovery_->discard();
    watcher_.stop();
}

bool qwzCQuillonDoc::onNewDocument()
{
    forgetFile();
    if (!winDocument::onNewDocument())
        return false;
    if (qwzCQuillonView* view = getView())
        view->setText(std::wstring());
    return true;
}

bool qwzCQuillonDoc::onOpenDocument(const std::wstring& path)
{
    // before the view is emptied: the loop that shows the empty view would append the old text's next piece
    forgetFile();
    if (qwzCQuillonView* view = getView())
        view->clearView();
    utString utf8 = qwzUtf8(path);
    keepUntitled_ = false;
    if (loadFile(utf8) != Loaded) {
        keepUntitled_ = true;
        setDocumentPath(utString());
    }
    setModified(false);
    return true;
}

qwzCQuillonDoc::LoadResult qwzCQuillonDoc::loadFile(const utString& path)
{
    qwzCQuillonView* view = getView();
    std::unique_ptr<char[]> bytes;
    std::size_t size = 0;
    // taken before the read: a write after it then shows as a change
    long long writeTime = qwzFileWatch::writeTimeOf(path);
    ReadResult read = utIsRegularFile(path) ? readWhole(path, bytes, size) : ReadResult::Failed;
    if (read == ReadResult::Failed) {
        tellUser(IDS_FILE_NOT_FOUND, path);
        return Missing;
    }
    // what the file watch compares later: the bytes as read, before decoding and rendering
    qwzFileWatch known(path);
    if (read == ReadResult::Ok)
        known.know(static_cast<long long>(size), lastBytes(bytes.get(), size), writeTime);
    utTextProbe probe = {true, utEncoding::Utf8, 0};
    bool decodedExactly = true;
    if (read == ReadResult::Ok) {
        probe = utProbeText(bytes.get(), size);
        if (probe.isText && !toUtf8(probe, bytes, size, decodedExactly))
            read = ReadResult::TooLarge;
    }
    // the control ends its text at the first NUL: refuse rather than show a silently cut file
    if (read == ReadResult::Ok && (!probe.isText || std::memchr(bytes.get(), '\0', size) != nullptr)) {
        tellUser(IDS_FILE_HAS_NUL, path);
        return HasNul;
    }
    std::size_t limit = view && view->hwnd()
                            ? static_cast<std::size_t>(SendMessageW(view->hwnd(), EM_GETLIMITTEXT, 0, 0))
                            : qwzEditText::maxUnits;
    std::size_t length = read == ReadResult::Ok ? qwzPercentRender::renderInPlace(bytes.get(), size) : 0;
    bool exact = true;
    std::size_t units = read == ReadResult::Ok ? qwzEditText::unitCount(bytes.get(), length, &exact) : 0;
    if (read == ReadResult::TooLarge || units > limit || units > qwzEditText::maxUnits) {
        tellUser(IDS_FILE_TOO_LARGE, path);
        return TooLarge;
    }
    std::string text;
    try {
        text.assign(bytes.get(), length);
    } catch (const std::bad_alloc&) {
        tellUser(IDS_FILE_TOO_LARGE, path);
        return TooLarge;
    }
    bytes.reset();
    setDocumentPath(path);
    // the file's name without its folder: a progress text with a long path would be cut off
    const std::string full = path.str();
    const std::size_t slash = full.find_last_of("\\/");
    loadName_ = utString::copyOf(full.substr(slash == std::string::npos ? 0 : slash + 1));
    opening_ = true;
    appendText(std::move(text));
    opening_ = false;
    percentsCollapsed_ = length != size;
    notUtf8_ = !exact;
    notUtf16_ = !decodedExactly;
    encoding_ = probe.encoding;
    utf16WithoutMark_ = probe.markLength == 0 && isUtf16(probe.encoding);
    alteredFile_ = percentsCollapsed_ || notUtf8_ || notUtf16_ ? pathName() : std::wstring();
    watchFile(known, false);
    return Loaded;
}

void qwzCQuillonDoc::appendText(std::string utf8)
{
    qwzCQuillonView* view = getView();
    if (!view || !view->hwnd())
        return;
    if (!loader_.progress) {
        loader_.progress = [this](int percent) { onLoadProgress(percent); };
        loader_.ended = [this](bool whole) { onLoadEnded(whole); };
    }
    if (!loader_.loading()) {
        openLoad_ = opening_;
        if (!opening_)
            loadName_ = qwzUtf8(title());
    }
    loader_.append(view->hwnd(), std::move(utf8));
}

void qwzCQuillonDoc::stopLoading()
{
    loader_.stop();
}

void qwzCQuillonDoc::onLoadProgress(int percent)
{
    winViewHost* window = frame();
    if (!window)
        return;
    if (!progressShown_) {
        progressShown_ = true;
        paneText_ = window->messageText();
        window->setBackgroundWork(true);
        // the bars are brought up to date when the loop falls idle, which it seldom does during a load
        window->onIdleUpdate();
    }
    window->setMessageText(
        qwzMessage(openLoad_ ? IDS_OPENING_PROGRESS : IDS_APPENDING_PROGRESS, loadName_.c_str(), percent));
}

void qwzCQuillonDoc::onLoadEnded(bool whole)
{
    if (!whole && !pathName().empty()) {
        partial_ = true;
        alteredFile_ = pathName();
        // only the file's start is shown: what it gains at its end does not follow it
        followsFile_ = false;
    }
    winViewHost* window = frame();
    if (!window || !progressShown_)
        return;
    progressShown_ = false;
    window->setMessageText(paneText_);
    window->setBackgroundWork(false);
    window->onIdleUpdate();
}

bool qwzCQuillonDoc::saveModified()
{
    stopLoading();
    return winDocument::saveModified();
}

void qwzCQuillonDoc::serialize(std::string& bytes)
{
    bytes.clear();
    serializedSize_ = 0;
    serializedTail_.clear();
    qwzCQuillonView* view = getView();
    if (!view)
        return;
    std::wstring text = view->text();
    bytes = utEncodeText(std::u16string_view(reinterpret_cast<const char16_t*>(text.data()), text.size()), encoding_);
    if (utf16WithoutMark_)
        bytes.erase(0, 2);
    // what the file holds once these bytes are saved: the watch's base after a save, with no read
    serializedSize_ = static_cast<long long>(bytes.size());
    serializedTail_.assign(lastBytes(bytes.data(), bytes.size()));
}

winDocument::SaveChoice qwzCQuillonDoc::confirmSave(const std::wstring& target)
{
    if (!isSameFile(target, alteredFile_))
        return SaveChoice::Write;
    std::wstring text = qwzMessage(IDS_SAVE_ALTERS_FILE, qwzUtf8(target).c_str());
    if (percentsCollapsed_)
        text += qwzMessage(IDS_SAVE_ALTERS_PERCENT);
    if (notUtf8_)
        text += qwzMessage(IDS_SAVE_ALTERS_UTF8);
    if (partial_)
        text += qwzMessage(IDS_SAVE_ALTERS_PARTIAL);
    if (notUtf16_)
        text += qwzMessage(IDS_SAVE_ALTERS_UTF16);
    text += qwzMessage(IDS_SAVE_ALTERS_QUESTION);
    // No is the default: Enter must not change the file
    switch (ask(text, MB_YESNOCANCEL | MB_ICONWARNING | MB_DEFBUTTON2)) {
    case IDYES:
        return SaveChoice::Write;
    case IDNO:
        return SaveChoice::OtherName;
    default:
        return SaveChoice::Cancel;
    }
}

bool qwzCQuillonDoc::onSaveDocument(const std::wstring& path)
{
    if (!winDocument::onSaveDocument(path))
        return false;
    if (isSameFile(path, alteredFile_)) {
        alteredFile_.clear();
        partial_ = false;
    }
    if (recovery_)
        recovery_->discard();
    // our own write is no change to report: the file as saved is what the view shows
    saved_ = qwzFileWatch(qwzUtf8(path));
    saved_.know(serializedSize_, serializedTail_, qwzFileWatch::writeTimeOf(saved_.path()));
    if (isSameFile(path, qwzWide(watcher_.path())))
        watchFile(saved_, false);
    return true;
}

void qwzCQuillonDoc::setRecovery(qwzCRecoveryKeeper* keeper)
{
    recovery_ = keeper;
}

void qwzCQuillonDoc::onTextChanged()
{
    // the loader's own appends are not the user's edits
    if (appending())
        return;
    winDocument::onTextChanged();
    noteEdit();
}

void qwzCQuillonDoc::noteEdit()
{
    if (recovery_)
        recovery_->noteEdit();
}

bool qwzCQuillonDoc::recoverySnapshot(qwzCRecoveryKeeper::Snapshot& snapshot) const
{
    qwzCQuillonView* view = getView();
    if (!isModified() || !view || !view->hwnd())
        return false;
    snapshot.text = view->text();
    snapshot.path = pathName();
    snapshot.encoding = encoding_;
    size_t start = 0, end = 0;
    view->selection(start, end);
    snapshot.caret = end;
    return true;
}

bool qwzCQuillonDoc::keepForRestart()
{
    return recovery_ && recovery_->writeNow() != qwzCRecoveryKeeper::Written::Failed;
}

bool qwzCQuillonDoc::restore(const qwzRecoveryRecord& record)
{
    stopLoading();
    qwzCQuillonView* view = getView();
    if (!view || !view->setText(qwzWide(record.text.c_str(), static_cast<int>(record.text.size()))))
        return false;
    alteredFile_.clear();
    partial_ = false;
    keepUntitled_ = false;
    // a save goes back in the encoding the file came in (a UTF-16 file gets its mark)
    encoding_ = record.encoding;
    utf16WithoutMark_ = false;
    setDocumentPath(utString(record.path.c_str()));
    setModified(true);
    view->setSelection(record.caret, record.caret);
    return true;
}

void qwzCQuillonDoc::tellUser(unsigned id, const utString& path)
{
    ask(qwzMessage(id, path.c_str()), MB_OK | MB_ICONERROR);
}

int qwzCQuillonDoc::ask(const std::wstring& text, unsigned type)
{
    if (winServices* app = services())
        return app->messageBox(text, type);
    return MessageBoxW(nullptr, text.c_str(), L"Quillon", type);
}

void qwzCQuillonDoc::lookAtFile()
{
    watcher_.lookNow();
}

void qwzCQuillonDoc::stopWatching()
{
    watcher_.stop();
}

void qwzCQuillonDoc::watchFile(const qwzFileWatch& known, bool fromDisk)
{
    tailDecoder_ = utTextDecoder(encoding_);
    followsFile_ = true;
    // set once: a finding's handler may come back here (a reload) while it runs
    if (!watcher_.onFinding)
        watcher_.onFinding = [this](qwzCFileWatcher::Finding& finding) { onFileChanged(finding); };
    watcher_.start(known, fromDisk);
}

void qwzCQuillonDoc::onFileChanged(qwzCFileWatcher::Finding& finding)
{
    // one question at a time: what changes while it is open is part of what it asks about
    if (askingAboutFile_)
        return;
    switch (finding.change) {
    case qwzFileWatch::Change::Unchanged:
        return;
    case qwzFileWatch::Change::Gone:
        // the text stays as it is; a save writes it back
        return;
    case qwzFileWatch::Change::Grown:
        if (followsFile_ && !isModified()) {
            std::string text;
            tailDecoder_.decode(finding.added.data(), finding.added.size(), text);
            std::string rendered = qwzPercentRender::render(text);
            // shown otherwise, as after an open: the save over the file asks first
            bool exact = true;
            qwzEditText::unitCount(rendered.data(), rendered.size(), &exact);
            bool collapsed = rendered.size() != text.size();
            if (collapsed || !exact) {
                // what a save over the file cleared no longer counts
                if (alteredFile_.empty())
                    percentsCollapsed_ = notUtf8_ = false;
                percentsCollapsed_ = percentsCollapsed_ || collapsed;
                notUtf8_ = notUtf8_ || !exact;
                alteredFile_ = pathName();
            }
            // the loader's path: a burst of tens of MB arrives in pieces, the window live
            appendText(std::move(rendered));
            return;
        }
        break;
    case qwzFileWatch::Change::Rewritten:
        break;
    }
    askToReload();
}

void qwzCQuillonDoc::askToReload()
{
    std::wstring path = pathName();
    std::wstring text = qwzMessage(IDS_FILE_CHANGED, qwzUtf8(path).c_str());
    text += qwzMessage(isModified() ? IDS_FILE_CHANGED_EDITS : IDS_FILE_CHANGED_RELOAD);
    askingAboutFile_ = true;
    int answer = ask(text, MB_YESNO | MB_ICONQUESTION);
    askingAboutFile_ = false;
    if (answer != IDYES) {
        followsFile_ = false;
        return;
    }
    onOpenDocument(path);
    // as an open: a file that cannot be read again leaves an empty, untitled document
    keepUntitled_ = false;
}
