// Shows a document's bytes as the edit channel's formatting shows them, without a formatter: "%%" becomes
// "%", every other byte ("%" included) stands as it is. A file's text is never a printf format.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

class qwzPercentRender
{
public:
    // Renders `text` in place; returns the new length (never more than `length`). No NUL is added.
    static std::size_t renderInPlace(char* text, std::size_t length);

    // The rendering of `text` as a new string.
    static std::string render(std::string_view text);
};
