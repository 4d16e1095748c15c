// The recent-file list, its registry values and its menu items.
#include "win/winRecentFiles.h"

#include "win/winHandles.h"

namespace
{

const wchar_t sectionName[] = L"Recent File List";
const size_t maxMenuPath = 64;

std::wstring valueName(size_t index)
{
    return L"File" + std::to_wstring(index + 1);
}

bool samePath(const std::wstring& a, const std::wstring& b)
{
    return CompareStringOrdinal(a.c_str(), int(a.size()), b.c_str(), int(b.size()), TRUE) == CSTR_EQUAL;
}

// Keeps the drive or share and the file name of a long path: "C:\\one\\...\\file.txt".
std::wstring shortened(const std::wstring& path)
{
    if (path.size() <= maxMenuPath)
        return path;
    size_t nameStart = path.find_last_of(L"\\/");
    std::wstring name = nameStart == std::wstring::npos ? path : path.substr(nameStart);
    size_t headEnd = path.find_first_of(L"\\/", path.size() > 3 ? 3 : 0);
    std::wstring head = headEnd == std::wstring::npos ? std::wstring() : path.substr(0, headEnd + 1);
    if (head.size() + name.size() + 3 >= path.size())
        return path;
    return head + L"..." + name;
}

} // namespace

winRecentFiles::winRecentFiles(std::wstring key, size_t capacity) : key_(std::move(key)), capacity_(capacity) {}

std::wstring winRecentFiles::registryKey() const
{
    return key_ + L"\\" + sectionName;
}

void winRecentFiles::load()
{
    paths_.clear();
    HKEY raw = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, registryKey().c_str(), 0, KEY_READ, &raw) != ERROR_SUCCESS)
        return;
    winRegKey key(raw);
    for (size_t i = 0; i < capacity_; ++i) {
        wchar_t buffer[4096];
        DWORD bytes = sizeof buffer - sizeof(wchar_t);
        DWORD type = 0;
        if (RegQueryValueExW(raw, valueName(i).c_str(), nullptr, &type, reinterpret_cast<BYTE*>(buffer), &bytes) !=
                ERROR_SUCCESS ||
            type != REG_SZ)
            continue;
        buffer[bytes / sizeof(wchar_t)] = L'\0';
        std::wstring path = buffer;
        bool known = false;
        for (const std::wstring& p : paths_)
            known = known || samePath(p, path);
        if (!path.empty() && !known)
            paths_.push_back(path);
    }
}

bool winRecentFiles::save() const
{
    HKEY raw = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, registryKey().c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &raw, nullptr) !=
        ERROR_SUCCESS)
        return false;
    winRegKey key(raw);
    bool ok = true;
    for (size_t i = 0; i < capacity_; ++i) {
        std::wstring name = valueName(i);
        if (i < paths_.size()) {
            const std::wstring& p = paths_[i];
            ok &= RegSetValueExW(raw, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(p.c_str()),
                                 DWORD((p.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
        } else {
            RegDeleteValueW(raw, name.c_str());
        }
    }
    return ok;
}

void winRecentFiles::add(const std::wstring& path)
{
    if (path.empty() || capacity_ == 0)
        return;
    for (size_t i = 0; i < paths_.size(); ++i)
        if (samePath(paths_[i], path)) {
            paths_.erase(paths_.begin() + std::ptrdiff_t(i));
            break;
        }
    paths_.insert(paths_.begin(), path);
    if (paths_.size() > capacity_)
        paths_.resize(capacity_);
}

void winRecentFiles::remove(size_t index)
{
    if (index < paths_.size())
        paths_.erase(paths_.begin() + std::ptrdiff_t(index));
}

std::wstring winRecentFiles::at(size_t index) const
{
    return index < paths_.size() ? paths_[index] : std::wstring();
}

std::wstring winRecentFiles::menuText(size_t index) const
{
    std::wstring text = L"&" + std::to_wstring(index + 1) + L" ";
    for (wchar_t c : shortened(at(index))) {
        text += c;
        if (c == L'&')
            text += L'&';
    }
    return text;
}

bool winRecentFiles::updateMenu(HMENU menu)
{
    int position = -1;
    int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        UINT id = GetMenuItemID(menu, i);
        if (id < firstId || id >= firstId + capacity_)
            continue;
        if (position < 0)
            position = i;
        // the placeholder is the one greyed item of the range: remember its (translated) text
        if (GetMenuState(menu, UINT(i), MF_BYPOSITION) & MF_GRAYED) {
            wchar_t text[256] = {};
            if (GetMenuStringW(menu, UINT(i), text, int(std::size(text)), MF_BYPOSITION) > 0)
                placeholder_ = text;
        }
    }
    if (position < 0)
        return false;
    for (UINT id = firstId; id < firstId + capacity_; ++id)
        DeleteMenu(menu, id, MF_BYCOMMAND);
    if (paths_.empty()) {
        InsertMenuW(menu, UINT(position), MF_BYPOSITION | MF_STRING | MF_GRAYED, firstId, placeholder_.c_str());
        return true;
    }
    for (size_t i = 0; i < paths_.size(); ++i)
        InsertMenuW(menu, UINT(position) + UINT(i), MF_BYPOSITION | MF_STRING, firstId + i, menuText(i).c_str());
    return true;
}
