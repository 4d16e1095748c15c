// Printing in-process against the real printer of the `printer` test fixture: the pages of empty, short,
// long and wrapped texts measured with the printer's font on the printer itself; the preview's paging,
// zoom and greyed commands; the progress window's page and its Cancel.
#include "quillonTestApp.h"
#include "resourceIds.h"

#include "win/winPrintJob.h"
#include "win/winPrintPreview.h"
#include "win/winPrinter.h"
#include "win/winTextPrinter.h"

#include <gtest/gtest.h>

namespace
{

using qw::QuillonTestApp;

std::wstring lines(int count)
{
    std::wstring text;
    for (int i = 1; i <= count; ++i)
        text += L"line " + std::to_wstring(i) + L"\r\n";
    return text;
}

int extent(HDC dc, const std::wstring& text)
{
    SIZE size = {};
    GetTextExtentPoint32W(dc, text.c_str(), int(text.size()), &size);
    return int(size.cx);
}

// The text of each row of page `page`, its runs joined by one blank.
std::vector<std::wstring> rows(winTextPrinter& printer, size_t page)
{
    std::vector<std::wstring> out;
    for (const utPageLayout::Run& run : printer.pageRuns(page)) {
        out.resize(std::max(out.size(), run.row + 1));
        std::wstring& row = out[run.row];
        row += (row.empty() ? L"" : L" ") + printer.text().substr(run.start, run.end - run.start);
    }
    return out;
}

// A document and a device context of the fixture's printer, and the lines a page of it holds.
class Print : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_NE(app.openDocumentFile(L""), nullptr);
        ASSERT_TRUE(winPrinter::installed()) << "no printer: run through ctest, whose `printer` fixture starts one";
        printerOwner = app.printer().createDC();
        dc = printerOwner.get();
        ASSERT_NE(dc, nullptr);
        winTextPrinter probe(L"", font());
        probe.beginPrinting(dc);
        perPage = probe.frame().linesPerPage;
    }
    winTextPrinter::FontFor font()
    {
        return [this](HDC printer) { return app.view()->printerFont(printer); };
    }

    QuillonTestApp app{L"quillonTests-print"};
    winOwnedDC printerOwner;
    HDC dc = nullptr;
    int perPage = 0;
};

struct PagesCase {
    const char* name;
    std::wstring text;
    size_t pages;
    std::wstring lastPageFirstRow;
};

TEST_F(Print, PagesAndWrapsMeasuredOnThePrinter)
{
    // 10 pt lines inside an inch of margin on letter or A4 paper
    EXPECT_GT(perPage, 45);
    EXPECT_LT(perPage, 75);
    const PagesCase cases[] = {
        {"empty", L"", 1, L""},
        {"short", L"one\r\ntwo", 1, L"one"},
        {"a page exactly", lines(perPage), 1, L"line 1"},
        {"one line more", lines(perPage + 1), 2, L"line " + std::to_wstring(perPage + 1)},
        {"long", lines(perPage * 3 - 1), 3, L"line " + std::to_wstring(perPage * 2 + 1)},
    };
    for (const PagesCase& c : cases) {
        winTextPrinter printer(c.text, font());
        ASSERT_EQ(printer.beginPrinting(dc), c.pages) << c.name;
        std::vector<std::wstring> last = rows(printer, c.pages - 1);
        EXPECT_EQ(last.empty() ? L"" : last[0], c.lastPageFirstRow) << c.name;
    }

    // nothing lost at a wrap is the layout's unit test and the printed PDF's; here, the rows measured on the
    // printer: each fits the frame, and a word too long for a row fills every row it breaks
    std::wstring sentence, word(300, L'm');
    for (int i = 0; i < 60; ++i)
        sentence += L"word" + std::to_wstring(i) + L" ";
    winTextPrinter printer(sentence + L"\r\n" + word, font());
    ASSERT_EQ(printer.beginPrinting(dc), 1u);
    std::vector<std::wstring> printed = rows(printer, 0);
    ASSERT_GT(printed.size(), 3u);
    for (size_t row = 0; row < printed.size(); ++row) {
        EXPECT_LE(extent(dc, printed[row]), printer.frame().width) << "row " << row;
        bool brokenWord = printed[row][0] == L'm' && row + 1 < printed.size();
        EXPECT_TRUE(!brokenWord || extent(dc, printed[row] + L"m") > printer.frame().width) << "row " << row;
    }
}

TEST_F(Print, PrintSetupsChoiceIsKeptForTheSession)
{
    const int landscapeRadio = 0x421; // rad2 of the common Print Setup dialog
    qw::whileModal([&] { EXPECT_TRUE(app.onFilePrintSetup()); },
                   [](HWND dialog) {
                       SendMessageW(GetDlgItem(dialog, landscapeRadio), BM_CLICK, 0, 0);
                       SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
                   });
    winOwnedDC chosen = app.printer().createDC();
    ASSERT_NE(chosen, nullptr);
    EXPECT_GT(GetDeviceCaps(chosen.get(), HORZRES), GetDeviceCaps(chosen.get(), VERTRES)) << "landscape from now on";
}

struct PreviewStep {
    int button; // 0: the state right after opening
    const char* label;
    const char* message;
    bool prev, next, pages, zoomIn, zoomOut;
};

TEST_F(Print, PreviewPagesZoomsAndGreysTheHiddenViewsCommands)
{
    qwzCQuillonView* view = app.view();
    view->setText(lines(perPage * 2 + 1));
    view->setSelection(7, 9);
    HWND frame = app.mainFrame()->hwnd();
    SendMessageW(frame, WM_COMMAND, ID_FILE_PRINT_PREVIEW, 0);
    winPrintPreview* preview = view->preview();
    ASSERT_NE(preview, nullptr);
    auto shown = [](HWND window) { return (GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE) != 0; };
    EXPECT_FALSE(shown(view->hwnd())) << "the preview takes the view's place";
    HWND toolBar = GetDlgItem(frame, ID_VIEW_TOOLBAR);
    ASSERT_NE(toolBar, nullptr);
    EXPECT_FALSE(shown(toolBar)) << "the preview's own bar stands in for the toolbar";

    using P = winPrintPreview;
    const PreviewStep steps[] = {
        {0, "Page 1 of 3", "Page 1", false, true, true, true, false},
        {P::nextButton, "Page 2 of 3", "Page 2", true, true, true, true, false},
        {P::pagesButton, "Pages 2-3 of 3", "Pages 2-3", true, false, true, true, false},
        {P::prevButton, "Pages 1-2 of 3", "Pages 1-2", false, true, true, true, false},
        {P::zoomInButton, "Page 1 of 3", "Page 1", false, true, false, true, true},
        {P::zoomInButton, "Page 1 of 3", "Page 1", false, true, false, false, true},
        {P::zoomOutButton, "Page 1 of 3", "Page 1", false, true, false, true, true},
        {P::zoomOutButton, "Pages 1-2 of 3", "Pages 1-2", false, true, true, true, false},
    };
    HWND bar = preview->hwnd();
    auto enabled = [&](int id) { return IsWindowEnabled(GetDlgItem(bar, id)) != FALSE; };
    for (const PreviewStep& s : steps) {
        if (s.button)
            SendMessageW(GetDlgItem(bar, s.button), BM_CLICK, 0, 0);
        std::string after = s.button ? "after button " + std::to_string(s.button) : "at the start";
        EXPECT_EQ(wt::narrow(qw::textOf(GetDlgItem(bar, P::pageLabel))), s.label) << after;
        EXPECT_EQ(wt::narrow(app.mainFrame()->messageText()), s.message) << after;
        EXPECT_EQ((std::vector<bool>{enabled(P::prevButton), enabled(P::nextButton), enabled(P::pagesButton),
                                     enabled(P::zoomInButton), enabled(P::zoomOutButton)}),
                  (std::vector<bool>{s.prev, s.next, s.pages, s.zoomIn, s.zoomOut}))
            << after << ": Prev, Next, Two Page, Zoom In, Zoom Out";
    }

    HMENU menu = GetMenu(frame);
    auto greyed = [&](int popup, unsigned id) {
        HMENU sub = GetSubMenu(menu, popup);
        SendMessageW(frame, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(sub), popup);
        return (GetMenuState(sub, id, MF_BYCOMMAND) & MF_GRAYED) != 0;
    };
    for (unsigned id : {57643u, 57635u, 57634u, 57637u, 57642u, 57636u, 253u})
        EXPECT_TRUE(greyed(1, id)) << "edit command " << id << " on the hidden view";
    EXPECT_TRUE(greyed(0, ID_FILE_PRINT_PREVIEW)) << "Print Preview while previewing";
    EXPECT_TRUE(greyed(2, ID_VIEW_TOOLBAR)) << "View > Toolbar while the preview's bar stands in";
    EXPECT_TRUE(GetMenuState(GetSubMenu(menu, 2), ID_VIEW_TOOLBAR, MF_BYCOMMAND) & MF_CHECKED)
        << "the user's choice kept";
    EXPECT_FALSE(greyed(0, ID_FILE_PRINT)) << "Print";
    EXPECT_FALSE(greyed(0, ID_FILE_PRINT_SETUP)) << "Print Setup";
    SendMessageW(frame, WM_COMMAND, ID_EDIT_SELECT_ALL, 0); // Select All does nothing while hidden
    EXPECT_EQ(wt::selection(*view).first, 7u);

    SendMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 0);
    EXPECT_EQ(view->preview(), nullptr) << "Esc closes the preview";
    EXPECT_TRUE(shown(view->hwnd()));
    EXPECT_TRUE(shown(toolBar)) << "the toolbar comes back with the view";
    EXPECT_EQ(GetFocus(), view->hwnd());
    EXPECT_EQ(wt::selection(*view), (std::pair<size_t, size_t>(7, 9))) << "the caret where it was";
    EXPECT_FALSE(greyed(1, ID_EDIT_SELECT_ALL)) << "Select All back with the view";
}

// Pages that record what they were asked to draw; on page 2 it reads the progress window and presses
// its Cancel.
class CancellingPages : public winPrintable
{
public:
    std::vector<size_t> drawn;
    std::wstring progressText;
    size_t beginPrinting(HDC) override
    {
        return 6;
    }
    void printPage(HDC dc, size_t page) override
    {
        drawn.push_back(page);
        TextOutW(dc, 100, 100, L"page", 4);
        if (page != 1)
            return;
        HWND progress = winPrintJob::progressWindow();
        for (HWND child = GetWindow(progress, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
            progressText += qw::textOf(child) + L"|";
        SendMessageW(GetDlgItem(progress, IDCANCEL), BM_CLICK, 0, 0);
    }
};

TEST_F(Print, ProgressShowsThePageAndCancelStopsTheJob)
{
    CancellingPages pages;
    HWND owner = app.mainFrame()->hwnd();
    EXPECT_EQ(winPrintJob::run(dc, L"QuillonPDF", pages, L"report.txt", 1, 0xFFFF, owner, &app),
              winPrintJob::Result::Cancelled);
    EXPECT_EQ(pages.drawn, (std::vector<size_t>{0, 1})) << "no page after the cancel";
    EXPECT_EQ(wt::narrow(pages.progressText), "report.txt|on QuillonPDF|Page 2 of 6|Cancel|");
    EXPECT_TRUE(IsWindowEnabled(owner)) << "the frame answers again";
    EXPECT_EQ(winPrintJob::progressWindow(), nullptr);
    EXPECT_TRUE(app.boxes.empty()) << "a cancel is no error";

    EXPECT_EQ(winPrintJob::run(dc, L"QuillonPDF", pages, L"report.txt", 7, 9, owner, &app),
              winPrintJob::Result::NothingToPrint);
    ASSERT_EQ(app.boxes.size(), 1u);
    EXPECT_EQ(wt::narrow(app.boxes[0].text), "The document has 6 page(s); the range chosen holds none of them.");

    // a device that refuses the document, as a printer gone offline does
    winOwnedDC screen(CreateCompatibleDC(nullptr));
    EXPECT_EQ(winPrintJob::run(screen.get(), L"QuillonPDF", pages, L"report.txt", 1, 1, owner, &app),
              winPrintJob::Result::Failed);
    ASSERT_EQ(app.boxes.size(), 2u);
    EXPECT_EQ(wt::narrow(app.boxes[1].text), "Failed to print report.txt: the printer QuillonPDF reported an error.");
    EXPECT_TRUE(app.boxes[1].type & MB_ICONERROR);
}

} // namespace
