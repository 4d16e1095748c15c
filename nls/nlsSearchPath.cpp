// A circular list with a sentinel head; each node owns its directory string.
#include "nls/nlsSearchPath.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <string>

nlsSearchPath::nlsSearchPath() : head_{&head_, &head_, nullptr}, cursor_(&head_) {}

nlsSearchPath::~nlsSearchPath()
{
    Node* node = head_.next;
    while (node != &head_) {
        Node* next = node->next;
        delete node->value;
        delete node;
        node = next;
    }
}

nlsSearchPath::Node* nlsSearchPath::nodeAt(int32_t index) const
{
    if (index < 0 || index >= count_)
        return nullptr;
    Node* node = head_.next;
    while (index-- > 0)
        node = node->next;
    return node;
}

const uiSaveString* nlsSearchPath::entry(int32_t index) const
{
    Node* node = nodeAt(index);
    return node ? node->value : nullptr;
}

void nlsSearchPath::insertBefore(Node* place, uiSaveString* value)
{
    Node* node = new Node{place->prev, place, value};
    place->prev->next = node;
    place->prev = node;
    ++count_;
}

int nlsSearchPath::addEntry(const char* text, int mode, int index)
{
    if (mode == Insert && index < 0)
        return BadIndex;
    std::string directory = text ? text : "";
    if (!directory.empty() && directory[0] == '~') {
        const char* home = std::getenv("HOME");
        if (!home)
            return NoHome;
        directory = home + directory.substr(1);
    }
    for (Node* node = head_.next; node != &head_; node = node->next)
        if (std::strcmp(node->value->text() ? node->value->text() : "", directory.c_str()) == 0)
            return Duplicate;
    uiSaveString* value = new uiSaveString(directory.c_str());
    if (mode == Prepend) {
        insertBefore(head_.next, value);
        if (cursor_ != &head_)
            ++cursorIndex_;
    } else if (mode == Insert && index < count_) {
        Node* place = nodeAt(index);
        insertBefore(place, value);
        if (cursor_ != &head_ && cursorIndex_ >= index)
            ++cursorIndex_;
    } else {
        insertBefore(&head_, value);
    }
    return Added;
}

int nlsSearchPath::addList(const char* text, int mode, int index)
{
    if (!text)
        return 0;
    // a double quote opens or closes a stretch in which ";" separates nothing; the quotes themselves
    // are not part of the directory, as in the PATH of Windows
    std::string piece;
    bool quoted = false;
    for (const char* p = text;; ++p) {
        if (*p == '"') {
            quoted = !quoted;
        } else if (*p && (quoted || *p != ';')) {
            piece += *p;
        } else {
            if (!piece.empty())
                addEntry(piece.c_str(), mode, index);
            piece.clear();
            if (!*p)
                break;
        }
    }
    return 0;
}

std::string nlsSearchPath::listOf(const char* directory)
{
    std::string one = directory ? directory : "";
    if (one.find(';') != std::string::npos)
        one = '"' + one + '"';
    return one;
}

bool nlsSearchPath::isAbsolute(const char* name)
{
    if (!name || !*name)
        return false;
    auto separator = [](char c) { return c == '/' || c == '\\'; };
    if (std::isalpha(static_cast<unsigned char>(name[0])))
        return name[1] == ':' && (separator(name[2]) || name[2] == '~');
    return separator(name[0]) || name[0] == '~';
}

uiSaveString nlsSearchPath::find(const char* name, nlsFileKind wanted) const
{
    if (!name)
        return uiSaveString();
    if (isAbsolute(name))
        return nlsProbeFile(name) == wanted ? uiSaveString(name) : uiSaveString();
    for (Node* node = head_.next; node != &head_; node = node->next) {
        std::string candidate;
        if (uiSaveString::same(node->value->text(), "."))
            candidate = name;
        else
            candidate = std::string(node->value->text() ? node->value->text() : "") + "/" + name;
        if (nlsProbeFile(candidate.c_str()) == wanted)
            return uiSaveString(candidate.c_str());
    }
    return uiSaveString();
}

uiSaveString nlsSearchPath::findWithSuffix(const char* name, const char* suffix) const
{
    std::string withSuffix = std::string(name ? name : "") + (suffix ? suffix : "");
    uiSaveString found = find(withSuffix.c_str(), nlsFILE);
    if (found.empty())
        found = find(name, nlsFILE);
    return found;
}
