// What can be printed and previewed: a document that lays itself out for a printer and draws any of its
// pages. Printing draws on the printer itself; preview draws the same pages on the screen in the
// printer's units, so what the preview shows is what prints.
#pragma once

#include <windows.h>

#include <cstddef>

class winPrintable
{
public:
    virtual ~winPrintable() = default;

    // Lays the pages out for `printer` (its resolution, paper and orientation); the page count, at least
    // 1. `printer` must outlive the layout: it measures every page drawn.
    virtual std::size_t beginPrinting(HDC printer) = 0;

    // Draws page `page` (0-based) on `target`, whose logical units are the printer's device units with
    // the origin at the corner of the printable area.
    virtual void printPage(HDC target, std::size_t page) = 0;
};
