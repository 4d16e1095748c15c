// The page layout. Widths add up in 64 bits, so no text and no measure can overflow them, and every
// printed line takes at least one character or one line end, so a layout always ends.
#include "foundation/utPageLayout.h"

#include <algorithm>
#include <climits>

namespace
{

bool isLineEnd(char16_t c)
{
    return c == u'\r' || c == u'\n';
}

bool isBlank(char16_t c)
{
    return c == u' ' || c == u'\t';
}

int clampToInt(long long value)
{
    return int(std::clamp<long long>(value, 0, INT_MAX));
}

} // namespace

utPageFrame utPageFrame::fit(const utPageSheet& sheet, int lineHeight)
{
    // a device that gives no sheet size: its printable area is the sheet
    int sheetWidth = sheet.width > 0 ? sheet.width : sheet.offsetX + sheet.printableWidth;
    int sheetHeight = sheet.height > 0 ? sheet.height : sheet.offsetY + sheet.printableHeight;
    // a small sheet (a card, a label) keeps an eighth of itself as margin
    int side = std::min(sheet.dpiX * 3 / 4, sheetWidth / 8);
    int topMargin = std::min(sheet.dpiY, sheetHeight / 8);
    int bottomMargin = topMargin;
    int printRight = sheet.offsetX + sheet.printableWidth;
    int printBottom = sheet.offsetY + sheet.printableHeight;
    lineHeight = std::max(lineHeight, 1);

    utPageFrame frame;
    int left = std::max(side, sheet.offsetX);
    int right = std::min(sheetWidth - side, printRight);
    int top = std::max(topMargin, sheet.offsetY);
    int footer = std::min(sheetHeight - bottomMargin / 2 - lineHeight / 2, printBottom - lineHeight);
    // a blank line between the text and the page number at least
    int bottom = std::min(sheetHeight - bottomMargin, footer - lineHeight);
    frame.left = left - sheet.offsetX;
    frame.top = top - sheet.offsetY;
    frame.width = std::max(right - left, 1);
    frame.linesPerPage = std::max((bottom - top) / lineHeight, 1);
    frame.footerTop = std::max(footer, top) - sheet.offsetY;
    return frame;
}

utPageLayout::utPageLayout(const char16_t* text, std::size_t length, utTextMeasure& measure, int width,
                           int linesPerPage, int tabColumns)
    : text_(text), length_(text ? length : 0), measure_(measure), width_(std::max(width, 1)),
      linesPerPage_(std::size_t(std::max(linesPerPage, 1))), tabColumns_(std::max(tabColumns, 1))
{
}

std::size_t utPageLayout::characterUnits(std::size_t pos, std::size_t end) const
{
    char16_t c = text_[pos];
    bool pair = c >= 0xD800 && c <= 0xDBFF && pos + 1 < end && text_[pos + 1] >= 0xDC00 && text_[pos + 1] <= 0xDFFF;
    return pair ? 2 : 1;
}

int utPageLayout::tabAdvance(long long x)
{
    if (tabWidth_ < 0) {
        const char16_t space = u' ';
        tabWidth_ = clampToInt((long long)std::max(measure_.advance(&space, 1), 0) * tabColumns_);
    }
    if (tabWidth_ == 0)
        return 0;
    return int(tabWidth_ - x % tabWidth_);
}

utPageLayout::Line utPageLayout::lineAt(std::size_t pos)
{
    const char16_t space = u' ';
    long long x = 0;
    std::size_t i = pos;
    // the last run of blanks that follows text on this line: the preferred place to wrap
    std::size_t blankStart = 0, afterBlank = 0;
    while (i < length_ && !isLineEnd(text_[i])) {
        if (isBlank(text_[i])) {
            std::size_t run = i;
            for (; i < length_ && isBlank(text_[i]); ++i)
                x += text_[i] == u'\t' ? tabAdvance(x) : std::max(measure_.advance(&space, 1), 0);
            if (run > pos)
                blankStart = run, afterBlank = i;
            continue;
        }
        std::size_t units = characterUnits(i, length_);
        long long w = std::max(measure_.advance(text_ + i, units), 0);
        if (x + w > width_ && i > pos) {
            // blanks hang past the edge and vanish at the wrap; a word with no blank before it is broken
            if (afterBlank != 0)
                return {pos, blankStart, afterBlank};
            return {pos, i, i};
        }
        x += w;
        i += units;
    }
    std::size_t end = i;
    while (end > pos && isBlank(text_[end - 1]))
        --end;
    std::size_t next = i;
    if (next < length_)
        next += text_[next] == u'\r' && next + 1 < length_ && text_[next + 1] == u'\n' ? 2 : 1;
    return {pos, end, next};
}

std::size_t utPageLayout::paginate()
{
    pageStarts_.assign(1, 0);
    lines_ = 0;
    std::size_t row = 0;
    for (std::size_t pos = 0; pos < length_; ++row, ++lines_) {
        if (row == linesPerPage_) {
            pageStarts_.push_back(pos);
            row = 0;
        }
        pos = lineAt(pos).next;
    }
    return pageStarts_.size();
}

void utPageLayout::appendRuns(const Line& line, std::size_t row, std::vector<Run>& runs)
{
    long long x = 0, runX = 0;
    std::size_t runStart = line.start;
    for (std::size_t i = line.start; i < line.end;) {
        if (text_[i] == u'\t') {
            if (i > runStart)
                runs.push_back({row, runStart, i, clampToInt(runX)});
            x += tabAdvance(x);
            runStart = ++i;
            runX = x;
            continue;
        }
        std::size_t units = characterUnits(i, line.end);
        x += std::max(measure_.advance(text_ + i, units), 0);
        i += units;
    }
    if (line.end > runStart)
        runs.push_back({row, runStart, line.end, clampToInt(runX)});
}

std::vector<utPageLayout::Run> utPageLayout::pageRuns(std::size_t page)
{
    std::vector<Run> runs;
    if (page >= pageStarts_.size())
        return runs;
    std::size_t pos = pageStarts_[page];
    for (std::size_t row = 0; row < linesPerPage_ && pos < length_; ++row) {
        Line line = lineAt(pos);
        appendRuns(line, row, runs);
        pos = line.next;
    }
    return runs;
}
