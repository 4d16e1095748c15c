// The framework's texts: string-table entries passed through the application's translator, "%1".."%9"
// placeholders filled without any printf-style interpretation, and UTF-8/UTF-16 conversion at the boundary.
#pragma once

#include <windows.h>

#include <initializer_list>
#include <string>

class winText
{
public:
    using Translator = std::wstring (*)(const std::wstring& english);

    // Installs the function that translates every framework text; nullptr restores the identity.
    static void setTranslator(Translator translator);

    // The installed translation of `english` (the text itself when no translator is installed).
    static std::wstring translate(const std::wstring& english);

    // The raw string-table text of `id` from the executable's resources; empty when there is none.
    static std::wstring loadRaw(unsigned id);

    // The string-table text of `id`, translated.
    static std::wstring load(unsigned id);

    // Replaces "%1".."%9" by the matching argument and "%%" by "%"; every other character, "%" included,
    // stays as it is, so a file name or user text can never be read as a format.
    static std::wstring format(const std::wstring& pattern, std::initializer_list<std::wstring> args);

    // Loads, translates and formats string-table entry `id`.
    static std::wstring formatId(unsigned id, std::initializer_list<std::wstring> args);

    // The text of `window`; empty for a null window.
    static std::wstring windowText(HWND window);

    // UTF-8 <-> UTF-16; invalid UTF-8 becomes U+FFFD; a text too big for the system's int counts gives
    // an empty result.
    static std::wstring fromUtf8(const std::string& text);
    static std::string toUtf8(const std::wstring& text);
};
