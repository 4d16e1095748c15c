// Parses the text of a link control: plain text with anchors <a href="target">link text</a>. Other tags
// are dropped; every anchor's text is a link range, but only the last anchor's target and range are
// the control's link. Positions are byte offsets into the plain text and never exceed its length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

class qwzLinkText
{
public:
    struct Range {
        std::size_t start = 0;
        std::size_t end = 0;
    };

    explicit qwzLinkText(std::string_view marked);

    // The text to show, anchors and other tags removed.
    const std::string& plainText() const
    {
        return plain_;
    }
    // Target of the last anchor (the text between the first two double quotes of its tag); empty when
    // there is none.
    const std::string& url() const
    {
        return url_;
    }
    // The last anchor's text in plainText(); start == end when there is no anchor.
    std::size_t linkStart() const
    {
        return link_.start;
    }
    std::size_t linkEnd() const
    {
        return link_.end;
    }
    // Every anchor's text, in order; each is shown with link effects.
    const std::vector<Range>& linkRanges() const
    {
        return ranges_;
    }

private:
    void parseAnchor(std::string_view tag, std::string_view& rest);

    std::string plain_;
    std::string url_;
    Range link_;
    std::vector<Range> ranges_;
};
