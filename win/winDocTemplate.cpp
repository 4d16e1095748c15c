// Single-document template: creation of the trio and the New/Open sequence with its save prompt.
#include "win/winDocTemplate.h"

#include "win/winDocument.h"
#include "win/winEditView.h"
#include "win/winFrame.h"
#include "win/winServices.h"
#include "win/winText.h"

winDocTemplate::winDocTemplate(unsigned resourceId, DocumentFactory makeDocument, ViewFactory makeView,
                               FrameFactory makeFrame)
    : resourceId_(resourceId), makeDocument_(std::move(makeDocument)), makeView_(std::move(makeView)),
      makeFrame_(std::move(makeFrame))
{
}

winDocTemplate::~winDocTemplate()
{
    destroyAll();
}

std::wstring winDocTemplate::docString(size_t index) const
{
    std::wstring all = winText::loadRaw(resourceId_);
    size_t start = 0;
    for (size_t i = 0; i < index; ++i) {
        start = all.find(L'\n', start);
        if (start == std::wstring::npos)
            return {};
        ++start;
    }
    size_t end = all.find(L'\n', start);
    return all.substr(start, end == std::wstring::npos ? std::wstring::npos : end - start);
}

void winDocTemplate::destroyAll()
{
    // the frame first: destroying its window takes the view's control with it
    frame_.reset();
    view_.reset();
    document_.reset();
}

bool winDocTemplate::createAll()
{
    document_ = makeDocument_();
    view_ = makeView_();
    frame_ = makeFrame_();
    if (!document_ || !view_ || !frame_) {
        destroyAll();
        return false;
    }
    view_->setServices(services_);
    document_->attach(view_.get(), frame_.get(), services_);
    std::wstring title = docString(0);
    if (title.empty() && services_)
        title = services_->appName();
    frame_->setAppTitle(title);
    if (!frame_->create(resourceId_, *document_, *view_, services_)) {
        destroyAll();
        return false;
    }
    frame_->recalcLayout();
    return true;
}

winDocument* winDocTemplate::openDocumentFile(const std::wstring& path)
{
    bool created = false;
    if (document_ && frame_ && frame_->hwnd()) {
        if (!document_->saveModified())
            return nullptr;
    } else {
        destroyAll();
        if (!createAll())
            return nullptr;
        created = true;
    }
    if (path.empty()) {
        if (!document_->onNewDocument()) {
            if (created)
                destroyAll();
            return nullptr;
        }
    } else if (!document_->onOpenDocument(path)) {
        if (created) {
            destroyAll();
            return nullptr;
        }
        // the old text may be half replaced: start over as a new document
        document_->onNewDocument();
        return nullptr;
    } else {
        document_->setPathName(path);
    }
    document_->setModified(false);
    frame_->updateTitle();
    return document_.get();
}
