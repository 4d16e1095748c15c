// The pieces' sizes come from measurement under Wine (bench/open.sh): the control lays a wrapped text out
// at a roughly constant cost per character, and each append adds a cost that grows with the text already
// in it (a walk over its lines), so pieces are as big as the time budget between two inputs allows and grow
// with the measured speed. Keeping the view where it was during the load matters as much: a control that
// shows the end of a long text pays that walk again at every paint.
#include "document/qwzCTextLoader.h"

#include <algorithm>
#include <chrono>

#include "document/qwzEditText.h"
#include "document/qwzTextPieces.h"

namespace
{

constexpr UINT_PTR timerId = 0x5154; // on the edit control, which sets no timer of this id itself
const wchar_t* const loaderProperty = L"qwzCTextLoader";
// more than a screenful of any text, laid out in a small part of the time budget
constexpr std::size_t firstPiece = 16 * 1024;
constexpr std::size_t smallestPiece = 16 * 1024;
constexpr std::size_t largestPiece = 4 * 1024 * 1024;
// half the longest time the window may go without handling input: the paint after a piece takes its share
constexpr double pieceSeconds = 0.25;

} // namespace

qwzCTextLoader::~qwzCTextLoader()
{
    if (timer_ && IsWindow(edit_)) {
        KillTimer(edit_, timerId);
        RemovePropW(edit_, loaderProperty);
    }
}

bool qwzCTextLoader::append(HWND edit, std::string utf8)
{
    if (edit == nullptr || utf8.empty())
        return true;
    if (loading() && edit == edit_) {
        queued_.erase(0, done_);
        done_ = 0;
        queued_ += utf8;
        return true;
    }
    stop();
    edit_ = edit;
    queued_ = std::move(utf8);
    done_ = 0;
    const bool whole = qwzTextPieces::cut(queued_.data(), queued_.size(), firstPiece) == queued_.size();
    bool ok = GetWindowTextLengthW(edit_) == 0
                  ? setFirstPiece(qwzTextPieces::cut(queued_.data(), queued_.size(), firstPiece),
                                  qwzEditText::unitCount(queued_.data(), queued_.size()))
                  : appendPiece(firstPiece, !whole);
    if (!ok || whole) {
        std::string().swap(queued_);
        done_ = 0;
        if (ok)
            finish(true);
        return ok;
    }
    userMoved_ = false;
    nextPiece_ = 2 * firstPiece;
    SetPropW(edit_, loaderProperty, this);
    timer_ = SetTimer(edit_, timerId, USER_TIMER_MINIMUM, onTimer);
    if (timer_ == 0) {
        // no timer left in the session: the rest in one go rather than not at all
        RemovePropW(edit_, loaderProperty);
        appendPiece(queued_.size() - done_, false);
        std::string().swap(queued_);
        done_ = 0;
        return true;
    }
    if (progress)
        progress(percent());
    return true;
}

void qwzCTextLoader::stop()
{
    if (loading())
        finish(false);
}

void CALLBACK qwzCTextLoader::onTimer(HWND edit, UINT, UINT_PTR id, DWORD)
{
    auto* loader = static_cast<qwzCTextLoader*>(GetPropW(edit, loaderProperty));
    if (loader && id == timerId && loader->loading())
        loader->step();
}

void qwzCTextLoader::step()
{
    const auto start = std::chrono::steady_clock::now();
    const std::size_t before = done_;
    if (!appendPiece(nextPiece_, true)) {
        finish(false);
        return;
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const std::size_t got = done_ - before;
    // as many bytes as the last speed lays out in the budget, at most twice the last piece
    const double fits = static_cast<double>(got) / std::max(seconds, 0.001) * pieceSeconds;
    nextPiece_ = std::clamp(static_cast<std::size_t>(std::min(fits, double(largestPiece))), smallestPiece,
                            std::max(smallestPiece, std::min(largestPiece, 2 * got)));
    if (done_ == queued_.size())
        finish(true);
    else if (progress)
        progress(percent());
}

bool qwzCTextLoader::setFirstPiece(std::size_t length, std::size_t units)
{
    // the control's own buffer: moveable local memory that it frees with itself
    HLOCAL buffer = LocalAlloc(LMEM_MOVEABLE, (units + 1) * sizeof(char16_t));
    if (buffer == nullptr)
        return false;
    auto* out = static_cast<char16_t*>(LocalLock(buffer));
    out[qwzEditText::convert(queued_.data(), length, out)] = u'\0';
    LocalUnlock(buffer);
    appending_ = true;
    HLOCAL previous = reinterpret_cast<HLOCAL>(SendMessageW(edit_, EM_GETHANDLE, 0, 0));
    SendMessageW(edit_, EM_SETHANDLE, reinterpret_cast<WPARAM>(buffer), 0);
    if (previous != nullptr && previous != buffer)
        LocalFree(previous);
    appending_ = false;
    InvalidateRect(edit_, nullptr, FALSE);
    done_ = length;
    endsWithCr_ = queued_[length - 1] == '\r';
    leftStart_ = leftEnd_ = 0;
    leftFirstLine_ = 0;
    return true;
}

bool qwzCTextLoader::appendPiece(std::size_t wanted, bool keepPlace)
{
    const char* bytes = queued_.data() + done_;
    const std::size_t length = qwzTextPieces::cut(bytes, queued_.size() - done_, wanted);
    qwzEditText text;
    if (length == 0 || !text.assign(bytes, length))
        return false;
    // an LF after the CR that ended the last piece completes its line end: no CR of its own
    const bool joinsCr = endsWithCr_ && bytes[0] == '\n';
    const auto* units = reinterpret_cast<const wchar_t*>(text.text()) + (joinsCr ? 1 : 0);

    DWORD start = 0, end = 0;
    SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    const LRESULT firstLine = SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0);
    if (keepPlace) {
        if (start != leftStart_ || end != leftEnd_ || firstLine != leftFirstLine_)
            userMoved_ = true;
        // the control scrolls to the caret it is given: nothing of that shows
        SendMessageW(edit_, WM_SETREDRAW, FALSE, 0);
    }
    appending_ = true;
    const LPARAM textEnd = GetWindowTextLengthW(edit_);
    SendMessageW(edit_, EM_SETSEL, static_cast<WPARAM>(textEnd), textEnd);
    SendMessageW(edit_, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(units));
    appending_ = false;
    if (keepPlace) {
        SendMessageW(edit_, EM_SETSEL, start, end);
        const LRESULT now = SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0);
        SendMessageW(edit_, EM_LINESCROLL, 0, firstLine - now);
        SendMessageW(edit_, WM_SETREDRAW, TRUE, 0);
        RedrawWindow(edit_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
        leftStart_ = start;
        leftEnd_ = end;
        leftFirstLine_ = SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0);
    } else {
        InvalidateRect(edit_, nullptr, FALSE);
    }
    done_ += length;
    endsWithCr_ = bytes[length - 1] == '\r';
    return true;
}

void qwzCTextLoader::finish(bool whole)
{
    const bool wasLoad = timer_ != 0;
    if (wasLoad) {
        KillTimer(edit_, timerId);
        RemovePropW(edit_, loaderProperty);
        timer_ = 0;
    }
    std::string().swap(queued_);
    done_ = 0;
    if (!IsWindow(edit_))
        return;
    if (whole) {
        DWORD start = 0, end = 0;
        SendMessageW(edit_, EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
        const bool moved = wasLoad && (userMoved_ || start != leftStart_ || end != leftEnd_ ||
                                       SendMessageW(edit_, EM_GETFIRSTVISIBLELINE, 0, 0) != leftFirstLine_);
        if (!moved) {
            // where an append leaves them: caret at the end, in view
            const LPARAM textEnd = GetWindowTextLengthW(edit_);
            SendMessageW(edit_, EM_SETSEL, static_cast<WPARAM>(textEnd), textEnd);
            SendMessageW(edit_, EM_SCROLLCARET, 0, 0);
        }
    }
    if (wasLoad && ended)
        ended(whole);
}

int qwzCTextLoader::percent() const
{
    return queued_.empty() ? 100 : static_cast<int>(static_cast<unsigned long long>(done_) * 100 / queued_.size());
}
