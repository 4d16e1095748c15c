// The few calls that differ between Windows and POSIX. Portable code meets the system only here.
// File names cross this boundary as UTF-16 (the foundation converts UTF-8 with its own rules first);
// texts for the user cross it as UTF-8.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>
#include <vector>

namespace platform
{

enum class EntryKind { Regular, Directory, CharDevice, Other, Untyped };

struct Status {
    EntryKind kind = EntryKind::Other;
    long long size = 0;
    // The last write, in the system's own units (only compared, never shown); 0 when unknown.
    long long writeTime = 0;
};

// File status (_wstat64i32 on Windows). Returns 0, or the C library's errno value on failure.
int stat(const char16_t* name, Status& out);

// _wfopen on Windows, fopen of the UTF-8 name elsewhere. Null on failure, errno set.
std::FILE* fopen(const char16_t* name, const char16_t* mode);

// Opens a file for reading (binary) without standing in anyone's way: while it is open, other programs
// may still write, rename, replace or delete it. Null on failure, errno set (ENOENT for a missing file).
std::FILE* fopenShared(const char16_t* name);

// Moves `file` to byte `offset` from its start, past 2 GiB too. Returns 0, or the C library's errno value.
int seek(std::FILE* file, long long offset);
// The length of the open `file`, which is left at its end; -1 on failure. Unlike a status call this is
// the length now, even while another program is still writing the file.
long long fileLength(std::FILE* file);

// Return 0, or the C library's errno value.
int unlink(const char16_t* name);
int rmdir(const char16_t* name);

// UTF-16 to the ANSI code page (WideCharToMultiByte, code page 0, no default character); UTF-8 where
// there is no such code page. False when the system refuses the text.
bool toAnsiCodePage(const std::u16string& text, std::string& out);

// The ANSI code page's number (65001 means UTF-8).
unsigned ansiCodePage();

// The user's default locale as Windows names it: English language name ("English (United Kingdom)"),
// abbreviated language ("ENG") and country ("GBR"). Elsewhere taken from QUILLON_USER_LOCALE, written
// "English (United Kingdom)|ENG|GBR", so that tests can choose it; "English (United States)|ENU|USA"
// when unset.
struct UserLocale {
    std::string englishLanguage;
    std::string abbrevLanguage;
    std::string abbrevCountry;
};
UserLocale userDefaultLocale();

// Sets the C library's locale for `category` (its own LC_ number) to what the non-empty `name` stands
// for: a Windows locale name such as "German" or "English_GBR". Returns the name of the locale set, empty
// when the system knows none. Elsewhere the languages Quillon ships stand for their POSIX locales (C.UTF-8
// where those are not installed) and any other name must be one the system knows as it is.
std::string setCLocale(int category, const std::string& name);

// The local time of `t`; false when the system cannot convert it.
bool localTime(std::time_t t, std::tm& out);

// Full path of the running executable in UTF-8, at most `maxChars` UTF-16 characters; empty on failure.
std::string executablePath(unsigned maxChars = 256);

enum class BoxIcon { None, Error, Warning, Information };

// A modal message box without owner, one OK button (stderr where there is no GUI).
void messageBox(const std::string& text, const std::string& title, BoxIcon icon);

// Text of a string-table entry in UTF-8; empty when the id does not exist.
std::string loadString(unsigned id);

// The bitmap resource `id` of the executable as 32-bit top-down pixels, four bytes each (blue, green, red,
// alpha, the alpha byte as stored). False when there is no such bitmap or it can't be converted.
bool loadBitmap(unsigned id, int& width, int& height, std::vector<std::uint8_t>& pixels);

// The colours of three-dimensional display elements, as the system's colour scheme gives them.
enum class SystemColour { ButtonFace, ButtonShadow, ButtonHighlight, WindowFrame };
struct Rgb {
    std::uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Rgb&) const = default;
};
// GetSysColor on Windows; elsewhere the default scheme's values.
Rgb systemColour(SystemColour which);

// Breaks into an attached debugger; does nothing without one.
void debugBreak();

} // namespace platform
