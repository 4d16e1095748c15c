// The bar state's registry values: three DWORDs in one subkey.
#include "win/winBarState.h"

#include "win/winHandles.h"

#include <windows.h>

namespace
{

const wchar_t section[] = L"\\Bar State";
const wchar_t toolBarValue[] = L"ToolBar";
const wchar_t sideValue[] = L"ToolBar Side";
const wchar_t statusBarValue[] = L"StatusBar";

bool readDword(HKEY key, const wchar_t* name, DWORD& value)
{
    DWORD type = 0, data = 0, size = sizeof data;
    if (RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(&data), &size) != ERROR_SUCCESS ||
        type != REG_DWORD || size != sizeof data)
        return false;
    value = data;
    return true;
}

bool writeDword(HKEY key, const wchar_t* name, DWORD value)
{
    return RegSetValueExW(key, name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&value), sizeof value) ==
           ERROR_SUCCESS;
}

} // namespace

winBarState winBarState::load(const std::wstring& appKey)
{
    winBarState state;
    HKEY raw = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, (appKey + section).c_str(), 0, KEY_READ, &raw) != ERROR_SUCCESS)
        return state;
    winRegKey owner(raw);
    HKEY key = owner.get();
    DWORD value = 0;
    if (readDword(key, toolBarValue, value) && value <= 1)
        state.toolBarVisible = value != 0;
    if (readDword(key, sideValue, value) && value <= Right)
        state.toolBarSide = static_cast<Side>(value);
    if (readDword(key, statusBarValue, value) && value <= 1)
        state.statusBarVisible = value != 0;
    return state;
}

bool winBarState::save(const std::wstring& appKey) const
{
    HKEY raw = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, (appKey + section).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &raw,
                        nullptr) != ERROR_SUCCESS)
        return false;
    winRegKey key(raw);
    return writeDword(key.get(), toolBarValue, toolBarVisible ? 1 : 0) &&
           writeDword(key.get(), sideValue, toolBarSide) &&
           writeDword(key.get(), statusBarValue, statusBarVisible ? 1 : 0);
}
