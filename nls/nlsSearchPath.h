// The ordered directories in which catalogs are looked for. Invariant: no two entries are equal byte
// for byte; the first entry, in order, that holds a name of the wanted kind answers.
#pragma once

#include <cstdint>
#include <string>

#include "nls/nlsFileKind.h"
#include "nls/uiSaveString.h"

class nlsSearchPath
{
public:
    enum Mode { Insert = 1, Append = 2, Prepend = 3 };
    enum Code { Added = 0, Duplicate = 1, NoHome = 3, BadIndex = 4 };

    nlsSearchPath();
    ~nlsSearchPath();
    nlsSearchPath(const nlsSearchPath&) = delete;
    nlsSearchPath& operator=(const nlsSearchPath&) = delete;

    // Adds one directory; a leading "~" becomes $HOME. Insert puts it at `index` (at or past the end
    // appends).
    int addEntry(const char* text, int mode, int index = 0);
    // Adds each non-empty ";"-separated piece; always 0, whatever the pieces gave. A piece may hold ";"
    // inside double quotes, which are dropped: "C:\a;b";D:\c is the two directories C:\a;b and D:\c.
    int addList(const char* text, int mode, int index = 0);
    // A list of the one directory given, whatever characters it holds.
    static std::string listOf(const char* directory);

    // The first path of the wanted kind: an absolute name is tested as it is, a relative one below each
    // entry ("." stands for the name alone). Empty when nothing matches.
    uiSaveString find(const char* name, nlsFileKind wanted) const;
    // find(name + suffix), then find(name), both for files.
    uiSaveString findWithSuffix(const char* name, const char* suffix) const;

    int32_t count() const
    {
        return count_;
    }
    // The entry at a position, or null.
    const uiSaveString* entry(int32_t index) const;
    int32_t cursorIndex() const
    {
        return cursorIndex_;
    }

    static bool isAbsolute(const char* name);

private:
    struct Node {
        Node* prev;
        Node* next;
        uiSaveString* value;
    };

    Node* nodeAt(int32_t index) const;
    void insertBefore(Node* place, uiSaveString* value);

    Node head_;
    int32_t count_ = 0;
    Node* cursor_;
    int32_t cursorIndex_ = -1;
};
