// Go To Line (dialog 249): asks for a line number, showing the range in its label. The range is shown,
// never enforced: any integer the user types is handed on.
#pragma once

#include "app/qwzCDialog.h"

class qwzCGoToLineDlg : public qwzCDialog
{
public:
    explicit qwzCGoToLineDlg(HWND parent, winServices* services = nullptr);

    void setRange(int min, int max)
    {
        rangeMin_ = min;
        rangeMax_ = max;
    }
    void setLine(int line)
    {
        line_ = line;
    }
    int getLine() const
    {
        return line_;
    }

protected:
    bool OnInitDialog() override;
    void doDataExchange(winDataExchange& dx) override;

private:
    int line_ = 1;
    int rangeMin_ = -1;
    int rangeMax_ = 0;
};
