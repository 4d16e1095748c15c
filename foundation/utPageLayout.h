// Text broken into printed pages. Lines end at CR-LF, LF or CR; a line wider than the frame wraps after
// its last blank that fits, a word wider than the frame is broken, and tabs stop every `tabColumns` space
// widths from the start of each printed line. A printed line depends only on where it starts, so a page
// is kept as the offset of its first line and laid out again when it is drawn: printing and preview draw
// the same runs from the same routine.
#pragma once

#include <cstddef>
#include <vector>

// Measures characters for a layout; the drawing must place characters by the same advances.
class utTextMeasure
{
public:
    virtual ~utTextMeasure() = default;
    // The advance width of one character: `units` is 1, or 2 for a surrogate pair.
    virtual int advance(const char16_t* character, std::size_t units) = 0;
};

// A sheet as a printer reports it, in device units. A width or height of 0 (a device that does not say)
// makes the printable area the whole sheet.
struct utPageSheet {
    int width = 0, height = 0;
    int offsetX = 0, offsetY = 0; // the printable area's corner on the sheet
    int printableWidth = 0, printableHeight = 0;
    int dpiX = 0, dpiY = 0;
};

// Where text and page number go, in the printable area's coordinates (a printer's origin).
struct utPageFrame {
    int left = 0, top = 0, width = 1;
    int linesPerPage = 1;
    int footerTop = 0; // the page-number line

    // Margins of 3/4 inch at the sides and 1 inch at top and bottom (an eighth of a smaller sheet), never
    // outside the printable area; the page number sits in the middle of the bottom margin. Never fewer
    // than one line of one unit.
    static utPageFrame fit(const utPageSheet& sheet, int lineHeight);
};

class utPageLayout
{
public:
    // Units [start, end) of the text, drawn at `x` from the frame's left edge on line `row` of its page.
    struct Run {
        std::size_t row;
        std::size_t start, end;
        int x;
    };

    // Lays `length` units of `text` (kept by the caller) into a frame `width` units wide.
    utPageLayout(const char16_t* text, std::size_t length, utTextMeasure& measure, int width, int linesPerPage,
                 int tabColumns = 8);

    // Lays out the whole text; the page count, at least 1 (an empty text prints one empty page).
    std::size_t paginate();
    std::size_t pageCount() const
    {
        return pageStarts_.size();
    }
    // Printed lines counted by paginate().
    std::size_t lineCount() const
    {
        return lines_;
    }
    // The runs of page `page` (0-based) after paginate(); none for a page past the last.
    std::vector<Run> pageRuns(std::size_t page);

private:
    struct Line {
        std::size_t start, end, next; // drawn units [start, end); the next line starts at `next`
    };
    // The printed line that starts at `pos` (pos < length).
    Line lineAt(std::size_t pos);
    std::size_t characterUnits(std::size_t pos, std::size_t end) const;
    int tabAdvance(long long x);
    void appendRuns(const Line& line, std::size_t row, std::vector<Run>& runs);

    const char16_t* text_;
    std::size_t length_;
    utTextMeasure& measure_;
    int width_;
    std::size_t linesPerPage_;
    int tabColumns_;
    int tabWidth_ = -1; // measured on first use
    std::size_t lines_ = 0;
    std::vector<std::size_t> pageStarts_;
};
