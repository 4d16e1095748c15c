// Quillon's document: one plain-text file shown in the view, which is the only store of its text. A file
// is read in one piece, decoded from the encoding its first bytes show (UTF-8 unless a byte-order mark or
// unambiguous evidence says UTF-16) and shown through the edit channel with "%%" rendered as "%" and
// nothing else interpreted; saving writes the view's text with CR-LF in the document's encoding (UTF-8
// with no mark for a new document). When the text shown is not the file's (a doubled per cent sign shown
// as one, bytes that are not UTF-8, UTF-16 that does not decode), the first save over that file asks first. A big text
// arrives in pieces (qwzCTextLoader) while the window stays live; commands that need the whole text
// wait for it, and a load stopped early counts as text shown otherwise.
// While a file is shown it is watched: new bytes added by another program are appended to an unedited
// view, any other change asks whether to reload.
#pragma once

#include <string>

#include "document/qwzCFileWatcher.h"
#include "document/qwzCRecoveryKeeper.h"
#include "document/qwzCTextLoader.h"
#include "foundation/utString.h"
#include "foundation/utTextEncoding.h"
#include "win/winDocument.h"

class qwzCQuillonView;
struct qwzRecoveryRecord;

class qwzCQuillonDoc : public winDocument
{
public:
    // Why a file was not shown.
    enum LoadResult { Loaded, Missing, TooLarge, HasNul };

    // What the file was read in and is saved in.
    utEncoding encoding() const
    {
        return encoding_;
    }

    // The only view of the document; null before the template attached it.
    qwzCQuillonView* getView() const;

    // A non-empty path becomes the title exactly as given and the path name; an empty or null one makes
    // the document "Untitled" with no path.
    void setDocumentPath(const utString& path);

    // Appends the file `path` to the view (callers empty it first) and makes it the document's path. A
    // file that is missing, unreadable, too large for the view or holds NUL bytes is not shown: nothing
    // is appended, the user is told, and the result says why.
    LoadResult loadFile(const utString& path);

    // Rendered UTF-8 text ("%%" already shown as "%") for the end of the view, through the loader: the
    // first piece at once, the rest from the message loop with progress in the status bar.
    void appendText(std::string utf8);
    // True while appended text is still arriving.
    bool loading() const
    {
        return loader_.loading();
    }
    // True while the loader itself changes the view (not an edit of the user's).
    bool appending() const
    {
        return loader_.appending();
    }
    // Stops a load: what arrived stays, and a save over the file asks first.
    void stopLoading();

    bool onNewDocument() override;
    // Always succeeds once the user has been told: a file that cannot be shown leaves an empty, untitled
    // document rather than a second error.
    bool onOpenDocument(const std::wstring& path) override;
    void setPathName(const std::wstring& path, bool addToRecentFiles = true) override;
    void serialize(std::string& bytes) override;
    // Over the file whose text is not shown as it is: Yes writes, No goes to Save As, Cancel writes nothing.
    SaveChoice confirmSave(const std::wstring& target) override;
    bool onSaveDocument(const std::wstring& path) override;
    // A load still going on is stopped first: the document is about to be closed or replaced.
    bool saveModified() override;

    // The window was activated: the file is looked at now rather than at the next round.
    void lookAtFile();
    // Stops watching the file (the window closes); the next open or save watches again.
    void stopWatching();
    // The file watched for changes; empty when none.
    const utString& watchedFile() const
    {
        return watcher_.path();
    }
    // The keeper of this document's unsaved text; null keeps none. Saving, New and Open tell it that the
    // unsaved text is gone.
    void setRecovery(qwzCRecoveryKeeper* keeper);
    // The text changed in the view: modified, and the keeper is told; the loader's own appends do neither.
    void onTextChanged() override;
    void noteEdit();
    // The unsaved text as the keeper writes it; false when the document is not modified.
    bool recoverySnapshot(qwzCRecoveryKeeper::Snapshot& snapshot) const;
    // Writes the unsaved text to the recovery file now, for a restart by Windows; false when it is not
    // kept (no keeper, or the write failed), so that the user must be asked.
    bool keepForRestart();
    // Shows a recovered text as a modified document under its original path ("Untitled" when it had
    // none), the caret where it was; false when the view cannot hold it.
    bool restore(const qwzRecoveryRecord& record);

private:
    // Stops the load and the watch and forgets what the old file was: the document is about to be replaced.
    void forgetFile();
    // The loader's news: progress in the message pane and the pointer; the end of a load.
    void onLoadProgress(int percent);
    void onLoadEnded(bool whole);
    // Shows string-table message `id` about `path` in an error box.
    void tellUser(unsigned id, const utString& path);
    // A message box of `type` through the application; the button chosen.
    int ask(const std::wstring& text, unsigned type);

    // Watches the file `known` describes, with a fresh decoder for its new bytes.
    void watchFile(const qwzFileWatch& known, bool fromDisk);
    void onFileChanged(qwzCFileWatcher::Finding& finding);
    // Asks whether to reload the file changed on disk; Yes reloads it.
    void askToReload();

    // Set while the template finishes an open that showed nothing.
    bool keepUntitled_ = false;
    // The file shown otherwise than it is on disk, and how; empty once the shown text was saved over it.
    std::wstring alteredFile_;
    bool percentsCollapsed_ = false;
    bool notUtf8_ = false;
    qwzCRecoveryKeeper* recovery_ = nullptr;
    bool notUtf16_ = false;
    utEncoding encoding_ = utEncoding::Utf8;
    // A UTF-16 file that came without a mark is saved without one.
    bool utf16WithoutMark_ = false;

    qwzCFileWatcher watcher_;
    // The file's new bytes are decoded across appends: an append that ends inside a character waits.
    utTextDecoder tailDecoder_{utEncoding::Utf8};
    // The view shows the file from its start, so that bytes added to the file belong at the view's end;
    // false once the user chose to keep a text that is no longer the file's.
    bool followsFile_ = false;
    bool askingAboutFile_ = false;
    // The bytes of the last serialize (their size and last bytes), and the file they were last saved to.
    long long serializedSize_ = 0;
    std::string serializedTail_;
    qwzFileWatch saved_;
    // the load of the file was stopped: only its start is shown
    bool partial_ = false;

    qwzCTextLoader loader_;
    // set while loadFile appends the file, so that its progress says "Opening"
    bool opening_ = false;
    // the load going on is the open of the file (else: text appended to it)
    bool openLoad_ = false;
    // the file named in the progress text, and the message pane's text before the load
    utString loadName_;
    std::wstring paneText_;
    bool progressShown_ = false;
};
