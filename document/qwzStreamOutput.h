// A channel over a narrow output stream that its caller opens and closes.
#pragma once

#include <ostream>

#include "document/qwzOutput.h"

class qwzStreamOutput : public qwzOutput
{
public:
    explicit qwzStreamOutput(std::ostream* stream);

    // The process-wide channel over standard output.
    static qwzOutput& standardOutput();

    // Inserts the text with the ordinary inserter; a failed put only sets the stream's badbit.
    void write(const utString& text) override;

private:
    std::ostream* stream;
};
