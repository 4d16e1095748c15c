// The version record. Invariant: fullName is productName, a blank, version and buildNumber run together,
// until a readable product file replaces the names.
#include "app/qwzVersionInfo.h"

#include <ctime>

#include "app/qwzAppCatalog.h"
#include "buildDate.h"
#include "foundation/utProductDescription.h"
#include "platform/platform.h"
#include "quillonVersion.h"
#include "resourceIds.h"

namespace
{

int digitsOf(const char* version)
{
    utString digits = utString::copyOf("");
    for (const char* p = version; *p; ++p)
        if (*p != '.')
            digits += utString(p, 1);
    int value = 0, error = -1;
    digits.toInteger(value, error);
    return value;
}

int localYear()
{
    std::time_t now = std::time(nullptr);
    std::tm local{};
    platform::localTime(now, local);
    return local.tm_year + 1900;
}

} // namespace

qwzVersionInfo::qwzVersionInfo()
    : version(QWZ_VERSION), versionDigits(digitsOf(QWZ_VERSION)), buildDate(QWZ_BUILD_DATE),
      buildNumber(QWZ_BUILD_NUMBER), productName("Quillon")
{
    fullName = productName + utString(" ") + version + buildNumber;
    displayName = fullName;
}

qwzVersionInfo& qwzVersionInfo::instance()
{
    static qwzVersionInfo record;
    return record;
}

utString qwzVersionInfo::copyrightText() const
{
    return displayName + utString("\n") +
           translateFormat(platform::loadString(IDS_COPYRIGHT_NOTICE).c_str(), localYear()) + utString("\n") +
           translate(platform::loadString(IDS_ALL_RIGHTS_RESERVED).c_str());
}

void qwzVersionInfo::readProductFile(const utString& productDir)
{
    utString path = productDir + utString("\\product");
    utProductDescription product;
    int code = product.load(path.c_str(), version + buildNumber);
    if (code == 0) {
        fullName = product.shortText();
        displayName = product.longText();
        productName = product.value(utString("name"));
    } else if (code == 1) {
        displayName += utString(" - No Product File");
    } else {
        displayName += utString(" - Product File Error");
    }
}
