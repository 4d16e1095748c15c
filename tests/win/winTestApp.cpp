// Test doubles for the window framework.
#include "winTestApp.h"

#include "testSupport.h"

namespace wt
{

TestApp::TestApp(const std::wstring& name)
{
    setAppName(name);
    setRegistryKey(L"QuillonTests");
    addDocTemplate(winDocTemplate::make<TestDocument, winEditView, winFrame>(frameResource));
}

int TestApp::messageBox(const std::wstring& text, UINT type, HWND owner)
{
    boxes.push_back({text, type});
    if (realBoxes)
        return winApp::messageBox(text, type, owner);
    if (!answers.empty()) {
        int a = answers.front();
        answers.pop_front();
        return a;
    }
    return (type & MB_TYPEMASK) == MB_OK ? IDOK : IDCANCEL;
}

bool TestApp::promptFileName(bool open, std::wstring& path)
{
    fileDialogsOpened.push_back(open);
    if (fileAnswers.empty())
        return false;
    path = fileAnswers.front();
    fileAnswers.pop_front();
    return !path.empty();
}

bool TestDocument::onNewDocument()
{
    bytes.clear();
    return winDocument::onNewDocument();
}

void TestDocument::serialize(std::string& out)
{
    out = bytes;
}

bool TestDocument::deserialize(const std::string& in)
{
    bytes = in;
    return true;
}

std::wstring scratch(const std::string& name)
{
    return winText::fromUtf8(qt::scratchDir(name));
}

// By UTF-8 name through the C library: the test programs run with the UTF-8 code page of the manifest.
std::string readWide(const std::wstring& path)
{
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES ? qt::readFile(narrow(path)) : "<missing>";
}

void writeWide(const std::wstring& path, const std::string& bytes)
{
    qt::writeFile(narrow(path), bytes);
}

std::vector<std::wstring> listDir(const std::wstring& dir)
{
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW data;
    HANDLE h = FindFirstFileW((dir + L"\\*").c_str(), &data);
    if (h == INVALID_HANDLE_VALUE)
        return names;
    do {
        std::wstring n = data.cFileName;
        if (n != L"." && n != L"..")
            names.push_back(n);
    } while (FindNextFileW(h, &data));
    FindClose(h);
    return names;
}

void clearSettings(const std::wstring& appName)
{
    RegDeleteTreeW(HKEY_CURRENT_USER, (L"Software\\QuillonTests\\" + appName).c_str());
}

std::string narrow(const std::wstring& text)
{
    return winText::toUtf8(text);
}

std::pair<size_t, size_t> selection(const winEditView& view)
{
    size_t start = 0, end = 0;
    view.selection(start, end);
    return {start, end};
}

} // namespace wt
