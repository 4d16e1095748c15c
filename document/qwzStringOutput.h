// A channel that collects everything written to it in memory, for its owner to read afterwards.
#pragma once

#include "document/qwzOutput.h"

class qwzStringOutput : public qwzOutput
{
public:
    qwzStringOutput();

    // Appends; when the accumulator or the text has no buffer, nothing happens.
    void write(const utString& text) override;

    const utString& text() const
    {
        return accumulated;
    }

private:
    utString accumulated;
};
