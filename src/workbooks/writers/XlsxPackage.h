#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include <QByteArray>

#include "workbooks/writers/ScratchText.h"

namespace excel {

/// Whether every part of a package just written can be read to its end, XML parts to the end of
/// their last element. The library that writes them does not notice a full disk in all places.
bool isWhole(const QByteArray& fileName);

/// What a sheet gets beside what the library writes.
struct SheetContent
{
    std::string columns; // the element that tells their widths, empty for none
    ScratchText rows;
    std::string drawing; // the element that refers to its drawings, empty for none
};

/// A part that the library does not write.
struct NewPart
{
    std::string name; // in the package
    std::string type; // for the list of types; empty if its ending is known there
    /// Makes its content, when it is packed.
    std::function<std::string()> text;
};

/// A package of the library with contents put into its sheets, the first one into the first sheet,
/// and with further parts; empty if that fails. The library itself would take three times as long
/// to compress the rows, and it rounds widths to pixels of another font than ours.
QByteArray withContents(QByteArray package, std::deque<SheetContent>& contents,
                        std::vector<NewPart> parts);

} // namespace excel
