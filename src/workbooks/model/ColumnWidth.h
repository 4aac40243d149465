#pragma once

#include "workbooks/model/Points.h"

namespace excel {

// A column is so many characters of the default font wide; files count the space beside them too.

constexpr double characterPixels = 8;
constexpr double spacePixels = 5;

/// Width of a column in pixels, space included.
constexpr double columnPixels(double characters)
{
    return characters < 1 ? characters * (characterPixels + spacePixels)
                          : characters * characterPixels + spacePixels;
}

/// The width of a column as files have it.
constexpr double fileWidth(double characters)
{
    return columnPixels(characters) / characterPixels;
}

/// The characters that a column of a file holds.
constexpr double charactersOf(double fileWidth)
{
    const double pixels = fileWidth * characterPixels;
    return pixels < characterPixels + spacePixels ? pixels / (characterPixels + spacePixels)
                                                  : (pixels - spacePixels) / characterPixels;
}

} // namespace excel
