// SColorPair: a text colour and its background, 0x00BBGGRR each; 8 bytes in the stored table.
#pragma once

#include "Platform/Types.h"

struct SColorPair
{
    COLORREF crText;       // colour of the characters
    COLORREF crBackground; // colour behind them

    friend bool operator==(const SColorPair&, const SColorPair&) noexcept = default;
};
static_assert(sizeof(SColorPair) == 8, "the colour table is stored byte for byte");

// Indexes of the colour table.
enum : int
{
    COLOR_TEXT = 0,
    COLOR_SELECTION = 1,
    COLOR_GREY_PAIR = 2,
    COLOR_RULER = 3,
    COLOR_LINE_NUMBER = 4,
    COLOR_CURSOR_INDICATOR = 5,
    COLOR_MARGIN = 6,
    COLOR_CURRENT_LINE = 7,
    COLOR_PAIR_MISMATCH = 8,
    COLOR_SPARE = 9,
    COLORS_COUNT = 10
};
