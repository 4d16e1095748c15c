// A domain holds one reference of its database and gives it back when it changes language or dies.
#include "nls/nlsDomain.h"

nlsDomain::~nlsDomain()
{
    releaseDatabase();
}

void nlsDomain::releaseDatabase()
{
    if (database_)
        nlsDataBase::release(database_);
    database_ = nullptr;
}
