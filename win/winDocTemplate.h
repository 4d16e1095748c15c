// The single-document template: one document, its edit view and its frame, created together on first
// use and reused for every later New or Open. The template owns all three.
#pragma once

#include <functional>
#include <memory>
#include <string>

class winDocument;
class winEditView;
class winFrame;
class winServices;

class winDocTemplate
{
public:
    using DocumentFactory = std::function<std::unique_ptr<winDocument>()>;
    using ViewFactory = std::function<std::unique_ptr<winEditView>()>;
    using FrameFactory = std::function<std::unique_ptr<winFrame>()>;

    // `resourceId` names the menu, accelerator table, icon and document string of the frame.
    winDocTemplate(unsigned resourceId, DocumentFactory makeDocument, ViewFactory makeView, FrameFactory makeFrame);
    ~winDocTemplate();

    // A template that makes the given classes with their default constructors.
    template <class Document, class View, class Frame> static std::unique_ptr<winDocTemplate> make(unsigned resourceId)
    {
        return std::make_unique<winDocTemplate>(
            resourceId, [] { return std::unique_ptr<winDocument>(new Document); },
            [] { return std::unique_ptr<winEditView>(new View); }, [] { return std::unique_ptr<winFrame>(new Frame); });
    }

    unsigned resourceId() const
    {
        return resourceId_;
    }

    // The application's services, handed on to the document, view and frame it makes; the application
    // that owns the template sets them.
    void setServices(winServices* services)
    {
        services_ = services;
    }

    // Field `index` of the document string (string-table entry resourceId, fields separated by "\n";
    // 0 is the window title); empty when missing.
    std::wstring docString(size_t index) const;

    // Opens `path` into the document, or starts a new one when `path` is empty. A modified document is
    // offered for saving first. Creates document, view and frame (hidden) on first use. Returns the
    // document, or null when the user cancelled or the document could not be made; a failed open of an
    // existing document leaves it new and untitled.
    winDocument* openDocumentFile(const std::wstring& path);

    winDocument* document() const
    {
        return document_.get();
    }
    winEditView* view() const
    {
        return view_.get();
    }
    winFrame* frame() const
    {
        return frame_.get();
    }

private:
    bool createAll();
    void destroyAll();

    unsigned resourceId_;
    winServices* services_ = nullptr;
    DocumentFactory makeDocument_;
    ViewFactory makeView_;
    FrameFactory makeFrame_;
    std::unique_ptr<winDocument> document_;
    std::unique_ptr<winEditView> view_;
    std::unique_ptr<winFrame> frame_;
};
