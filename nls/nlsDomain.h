// One message domain: a name, the directories of its catalogs, the language chosen for it and the
// database loaded for that language (null when none). Created and driven by nlsDomainManager.
#pragma once

#include <cstdint>

#include "nls/nlsDataBase.h"
#include "nls/nlsLanguage.h"
#include "nls/uiSaveString.h"

class nlsDomain
{
public:
    nlsDomain(const char* directory, const char* name) : name_(name), directory_(directory) {}
    ~nlsDomain();
    nlsDomain(const nlsDomain&) = delete;
    nlsDomain& operator=(const nlsDomain&) = delete;

    const uiSaveString& name() const
    {
        return name_;
    }
    const uiSaveString& directory() const
    {
        return directory_;
    }
    const nlsLanguage& language() const
    {
        return language_;
    }
    void setLanguage(const nlsLanguage& language)
    {
        language_ = language;
    }
    bool loaded() const
    {
        return loaded_ != 0;
    }
    void setLoaded(bool loaded)
    {
        loaded_ = loaded ? 1 : 0;
    }
    const nlsDataBase* database() const
    {
        return database_;
    }
    // Takes over one reference of the database.
    void setDatabase(nlsDataBase* database)
    {
        releaseDatabase();
        database_ = database;
    }
    void releaseDatabase();

    // The catalog's message for a text, or the text itself.
    const char* translate(const char* text) const
    {
        return database_ ? database_->translate(text) : text;
    }

private:
    uiSaveString name_;
    uint32_t loaded_ = 0;
    nlsLanguage language_;
    nlsDataBase* database_ = nullptr;
    uiSaveString directory_;
};
