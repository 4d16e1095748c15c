// The comparison and the message. The key comparison is text on purpose: the server sends digits in the
// program's own layout, and a key with dots counts as older than every digit key ("." sorts first).
#include "http/qwzVersionCheck.h"

#include <cstring>

#include "app/qwzAppCatalog.h"
#include "app/qwzVersionInfo.h"
#include "platform/platform.h"
#include "productServer.h"
#include "resourceIds.h"

std::string qwzOwnVersionKey()
{
    const qwzVersionInfo& version = qwzVersionInfo::instance();
    std::string key;
    for (const std::string& part : {version.version.str(), version.buildNumber.str()})
        for (char c : part)
            if (c != '.')
                key += c;
    return key;
}

int qwzCompareVersionKeys(const char* serverKey, const char* ownKey)
{
    return std::strcmp(serverKey, ownKey);
}

std::string qwzNeutraliseMarkup(const char* text)
{
    std::string safe;
    for (const char* p = text; *p; ++p) {
        if (*p == '<')
            safe += "\xE2\x80\xB9";
        else if (*p == '>')
            safe += "\xE2\x80\xBA";
        else
            safe += *p;
    }
    return safe;
}

VersionCheckResult qwzVersionVerdict(const qwzVersionAnswers& answers, const char* host)
{
    VersionCheckResult result;
    if (answers.keyStatus != 0 || answers.displayStatus != 0 || !answers.key || !answers.display) {
        result.message = translateFormat(platform::loadString(IDS_VERSION_NO_CONTACT).c_str(), host);
        return result;
    }
    const utString& fullName = qwzVersionInfo::instance().fullName;
    std::string display = qwzNeutraliseMarkup(answers.display);
    int order = qwzCompareVersionKeys(answers.key, qwzOwnVersionKey().c_str());
    if (order < 0) {
        result.message = translateFormat(platform::loadString(IDS_VERSION_NEWER).c_str(), fullName.c_str(),
                                         display.c_str(), QWZ_SUPPORT_EMAIL, QWZ_SUPPORT_EMAIL);
    } else if (order == 0) {
        result.message = translateFormat(platform::loadString(IDS_VERSION_LATEST).c_str(), fullName.c_str());
        result.upToDate = 1;
    } else {
        result.message = translateFormat(platform::loadString(IDS_VERSION_OLDER).c_str(), fullName.c_str(),
                                         display.c_str(), QWZ_DOWNLOAD_PAGE);
    }
    return result;
}
