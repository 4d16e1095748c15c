// Error texts of the catalog library. The text of one error is built in a single shared buffer.
#include "nls/nlsError.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>

void nlsError::addArgument(const char* text)
{
    if (count_ < 5)
        args_[count_++] = uiSaveString(text ? text : "");
}

const uiSaveString& nlsError::argument(int32_t i) const
{
    static const uiSaveString rangeError("Internal range error");
    if (i < 0 || i >= count_)
        return rangeError;
    return args_[i];
}

const char* nlsError::text() const
{
    static std::string shared;
    auto arg = [this](int i) {
        const char* t = argument(i).text();
        return std::string(t ? t : "");
    };
    switch (code_) {
    case None:
        return "nlsERROR_NONE";
    case LocaleFailed:
        shared = "NLS Warning: Setting up locale for language <" + arg(0) + "> failed";
        return shared.c_str();
    case CatalogMissing:
        shared = "NLS Warning: Catalog <" + arg(0) + "> failed to load for language <" + arg(1) + ">";
        return shared.c_str();
    case FallbackUsed:
        shared = "NLS Warning: Catalog <" + arg(0) + "> failed to load for language <" + arg(1) +
                 "> so fallback language <" + arg(2) + "> was used";
        return shared.c_str();
    case FormatRefused:
        shared = "NLS Warning: Catalog <" + arg(0) + "> translates <" + arg(1) +
                 "> with other printf conversions, so the English text was used";
        return shared.c_str();
    case DomainExists:
        shared = "NLS Error: Domain (nls database) already exists for catalog <" + arg(0) + "> and language <" +
                 arg(1) + ">";
        return shared.c_str();
    default:
        break;
    }
    const char* fixed = "Internal error";
    switch (code_) {
    case InitFailed:
        fixed = "Initialisation failed";
        break;
    case CannotStat:
        fixed = "Could not stat the catalog";
        break;
    case CannotOpen:
        fixed = "Could not open the catalog";
        break;
    case BadMagic:
        fixed = "Catalog Magic number failed";
        break;
    case BadRevision:
        fixed = "Catalog revision number is incompatible";
        break;
    case NoDomain:
        fixed = "Domain does not exist";
        break;
    case NoMemory:
        fixed = "memory error";
        break;
    case Corrupt:
        fixed = "Catalog is corrupt";
        break;
    case PathFailed:
        fixed = "Path to domain failed";
        break;
    default:
        break;
    }
    shared = std::string("NLS Error: ") + fixed;
    return shared.c_str();
}

void nlsError::print() const
{
    nlsPrintMessage("%s\n", text());
}

void nlsPrintMessage(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    va_list again;
    va_copy(again, args);
    int length = std::vsnprintf(nullptr, 0, format, args);
    va_end(args);
    if (length > 0) {
        std::string buffer(size_t(length) + 1, '\0');
        std::vsnprintf(buffer.data(), buffer.size(), format, again);
        std::fputs(buffer.c_str(), stdout);
        std::fflush(stdout);
    }
    va_end(again);
}
