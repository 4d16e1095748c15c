// Word boundaries in the edit view's text, for wrapping long lines and for moving the caret by words: a
// word is a run of characters other than spaces and tabs, as in the classic edit control. The view hands
// this to its control because the system's own rule may look at the whole text on every change (under
// Wine it segments all of it again), which would make each append of a big text cost more than the last.
#pragma once

class qwzWordBreak
{
public:
    // The actions of an edit control's word-break procedure, with the system's values.
    enum Action { Left = 0, Right = 1, IsDelimiter = 2 };

    // For `count` UTF-16 units of `text` and a position `index` in them: Left, the start of the word at or
    // before the unit before `index`; Right, the start of the next word after the one at `index` (or
    // `count`); IsDelimiter, 1 when the unit at `index` is a space or a tab. 0 for anything else.
    static int find(const char16_t* text, int index, int count, int action);
};
