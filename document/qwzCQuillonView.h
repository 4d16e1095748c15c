// The document's view: the framework's edit view in Courier New 10 pt, wrapping long lines at the
// window's edge (never a horizontal scroll bar), with Go To Line; it prints in the same font. The edit control is the
// only store of the document's text.
#pragma once

#include <windows.h>

#include "win/winEditView.h"

class qwzCQuillonView : public winEditView
{
public:
    // The Go To Line command (Ctrl+G).
    static constexpr unsigned goToLineCommand = 253;

    qwzCQuillonView() = default;
    ~qwzCQuillonView() override;

    // Empties the control and lets the pending painting happen, so that the view is visibly empty before
    // a long operation begins.
    void clearView();

    // Go To Line: asks for a line with the caret's line proposed and moves the caret there.
    void onGoToLine();
    // Moves the caret to the start of display line `line` (1-based), unchecked: a line past the end only
    // drops the selection.
    void goToLine(int line);

    // Commands that need the whole text (Save, Save As, Print, Print Preview, Find, Go To) are greyed and
    // do nothing while the document's text is still arriving.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;
    // A change of the text marks the document modified and tells its recovery keeper; the loader's own
    // appends do neither.
    void OnControlNotify(unsigned code) override;

    // Prints in the display font's 10 pt, made for the printer's own resolution.
    LOGFONTW printerFont(HDC printer) const override;

    // The display font; null when it could not be made.
    HFONT font() const
    {
        return font_;
    }

protected:
    DWORD windowStyle() const override;
    bool OnCreate() override;
    // Shows the Go To Line dialog for lines 1..`count` with `line` proposed; false when cancelled.
    virtual bool askLine(int count, int& line);

private:
    // True for a command that must wait while the document's text is still arriving.
    bool waitsForText(unsigned id) const;

    HFONT font_ = nullptr;
};
