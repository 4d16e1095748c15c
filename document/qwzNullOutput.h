// A channel that discards everything.
#pragma once

#include "document/qwzOutput.h"

class qwzNullOutput : public qwzOutput
{
public:
    void write(const utString&) override {}
};
