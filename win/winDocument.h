// A document: title, path and modified flag, and the New/Open/Save/Save As flows with their prompts.
// Saving always goes through winSafeSave, so a failed save leaves the file on disk as it was.
#pragma once

#include "win/winCommandTarget.h"
#include "win/winSafeSave.h"

#include <string>

class winEditView;
class winServices;
class winViewHost;

class winDocument : public winCommandTarget
{
public:
    winDocument() = default;
    winDocument(const winDocument&) = delete;
    winDocument& operator=(const winDocument&) = delete;
    ~winDocument() override = default;

    // The title shown in the frame's caption ("Untitled" for a new document).
    const std::wstring& title() const
    {
        return title_;
    }
    // Sets the title and refreshes the frame's caption.
    virtual void setTitle(const std::wstring& title);

    // The full path of the file; empty for a document never saved.
    const std::wstring& pathName() const
    {
        return pathName_;
    }
    // Sets the path and the title to it (the path exactly as given); adds it to the recent files when asked.
    virtual void setPathName(const std::wstring& path, bool addToRecentFiles = true);

    bool isModified() const
    {
        return modified_;
    }
    // The text changed in the view (EN_CHANGE); the default marks the document modified.
    virtual void onTextChanged()
    {
        modified_ = true;
    }
    void setModified(bool modified = true)
    {
        modified_ = modified;
    }

    // The view and frame of the document and the application's services (set by the template).
    winEditView* view() const
    {
        return view_;
    }
    winViewHost* frame() const
    {
        return frame_;
    }
    winServices* services() const
    {
        return services_;
    }
    void attach(winEditView* view, winViewHost* frame, winServices* services)
    {
        view_ = view;
        frame_ = frame;
        services_ = services;
    }

    // Makes the document empty and untitled; false keeps the old document. The default empties the view.
    virtual bool onNewDocument();
    // Loads `path`; false means the open failed (the template then starts an empty document).
    // The default reads the file's bytes and passes them to deserialize().
    virtual bool onOpenDocument(const std::wstring& path);
    // Saves to `path` through serialize() and winSafeSave; on failure tells the user and returns false.
    virtual bool onSaveDocument(const std::wstring& path);

    // The bytes to save; the default is the view's text as UTF-8.
    virtual void serialize(std::string& bytes);
    // Takes the bytes of an opened file; the default shows them as UTF-8 in the view and refuses (false)
    // bytes that the control could not show whole (a NUL byte, a text too big).
    virtual bool deserialize(const std::string& bytes);

    // Asks "Save changes to <title>?" when modified. Yes saves (false if that fails), No goes on,
    // Cancel returns false: the caller must not close or replace the document.
    virtual bool saveModified();

    // What confirmSave() decides about writing to a target.
    enum class SaveChoice { Write, OtherName, Cancel };
    // Asked before every write to `target`; OtherName goes (back) to Save As. The default writes.
    virtual SaveChoice confirmSave(const std::wstring& target);
    // True when `a` and `b` name the same file (full paths compared without regard to case).
    static bool isSameFile(const std::wstring& a, const std::wstring& b);

    // Save (to the path, or Save As when there is none); false when not saved.
    bool doFileSave();
    // Save As when `path` is empty (asking for a name), else save to `path`; false when not saved.
    bool doSave(const std::wstring& path, bool replacePath = true);

    // Save and Save As.
    bool onCommand(unsigned id) override;
    bool onUpdateCommand(unsigned id, winCommandState& state) override;

    // Writes `bytes` safely and, on failure, shows the matching error box for `path`.
    bool writeFileReporting(const std::wstring& path, const std::string& bytes);
    // The message shown for a failed save of `path`.
    static std::wstring saveErrorText(const std::wstring& path, const winSaveResult& result);

private:
    static winCommandTable<winDocument> commands();

    std::wstring title_;
    std::wstring pathName_;
    bool modified_ = false;
    winEditView* view_ = nullptr;
    winViewHost* frame_ = nullptr;
    winServices* services_ = nullptr;
};
