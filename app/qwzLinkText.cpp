// Link-text parsing. A "<" without a later ">" ends the parse after the text before it; the closing tag
// of an anchor is whatever runs up to the next ">".
#include "app/qwzLinkText.h"

qwzLinkText::qwzLinkText(std::string_view marked)
{
    std::string_view rest = marked;
    while (!rest.empty()) {
        std::size_t open = rest.find('<');
        plain_.append(rest.substr(0, open));
        if (open == std::string_view::npos)
            break;
        std::size_t close = rest.find('>', open);
        if (close == std::string_view::npos)
            break;
        std::string_view tag = rest.substr(open + 1, close - open - 1);
        rest.remove_prefix(close + 1);
        if (!tag.empty() && tag.front() == 'a')
            parseAnchor(tag, rest);
    }
}

void qwzLinkText::parseAnchor(std::string_view tag, std::string_view& rest)
{
    url_.clear();
    std::size_t first = tag.find('"');
    if (first != std::string_view::npos) {
        std::size_t second = tag.find('"', first + 1);
        if (second != std::string_view::npos)
            url_.assign(tag.substr(first + 1, second - first - 1));
    }
    std::size_t textEnd = rest.find('<');
    std::string_view linkText = rest.substr(0, textEnd);
    link_.start = plain_.size();
    plain_.append(linkText);
    link_.end = plain_.size();
    ranges_.push_back(link_);
    if (textEnd == std::string_view::npos) {
        rest = {};
        return;
    }
    std::size_t close = rest.find('>', textEnd);
    rest = close == std::string_view::npos ? std::string_view{} : rest.substr(close + 1);
}
