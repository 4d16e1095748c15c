// Appends text at the end of an edit control in pieces, from the message loop: a timer between pieces lets
// the window paint, resize, scroll and take input, since WM_TIMER comes only when nothing else is waiting.
// The first piece goes in at once and is small, so the first screenful shows without waiting for the rest;
// each later piece is sized from the time the one before took, so that no append holds the window for
// long. A text that fits in the first piece is one append and the owner hears nothing of a load.
//
// While pieces arrive the loader keeps the caret, selection and scroll position as they were before each
// append (the top of the text, unless the user moved), because painting the end of a long wrapped text
// costs the control a walk over all its lines. At the end it leaves the caret where an append leaves it,
// at the end of the text in view, unless the user moved it meanwhile.
#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>

class qwzCTextLoader
{
public:
    // What the owner is told: `progress` while a load of more than one piece goes on (0..100, the first
    // call starts the load), `ended` when such a load ends (`whole`: every byte was appended).
    std::function<void(int percent)> progress;
    std::function<void(bool whole)> ended;

    qwzCTextLoader() = default;
    qwzCTextLoader(const qwzCTextLoader&) = delete;
    qwzCTextLoader& operator=(const qwzCTextLoader&) = delete;
    ~qwzCTextLoader();

    // Appends UTF-8 text (as the edit channel takes it: LF or CR-LF line ends, converted here) at the end
    // of `edit`, after whatever is still queued. Into an empty control the text goes into a buffer sized
    // for all of it, handed to the control, so that the control never grows its buffer piece by piece.
    // False when memory is short (nothing queued).
    bool append(HWND edit, std::string utf8);

    // True while queued text is still to be appended.
    bool loading() const
    {
        return timer_ != 0;
    }
    // True inside the loader's own changes of the control (its change notifications are not the user's).
    bool appending() const
    {
        return appending_;
    }
    // Drops the text not appended yet; what is in the control stays. Tells `ended` (not whole).
    void stop();

private:
    static void CALLBACK onTimer(HWND edit, UINT message, UINT_PTR id, DWORD time);
    // Appends the next piece; ends the load after the last one.
    void step();
    // Appends the next piece of at most `wanted` bytes; `keepPlace` restores the caret, selection and
    // scroll position found before it. False when memory is short.
    bool appendPiece(std::size_t wanted, bool keepPlace);
    // The first piece into an empty control: a buffer with room for `units` more, the piece in it.
    bool setFirstPiece(std::size_t length, std::size_t units);
    void finish(bool whole);
    int percent() const;

    HWND edit_ = nullptr;
    std::string queued_;
    // bytes of queued_ already appended
    std::size_t done_ = 0;
    std::size_t nextPiece_ = 0;
    UINT_PTR timer_ = 0;
    bool appending_ = false;
    // the control's text ends with a CR, which a piece starting with LF completes
    bool endsWithCr_ = false;
    // the user moved the caret or scrolled since the load began
    bool userMoved_ = false;
    DWORD leftStart_ = 0;
    DWORD leftEnd_ = 0;
    LRESULT leftFirstLine_ = 0;
};
