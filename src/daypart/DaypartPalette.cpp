#include "daypart/DaypartPalette.h"

namespace {

/// In the order of the dayparts.
constexpr std::array palettes{
    DaypartPalette{
        .background = 0xFFFAF6F1,
        .surface = 0xFFF3EBE3,
        .surfaceElevated = 0xFFFFFFFF,
        .border = 0xFFE0D4C8,
        .text = 0xFF2C241C,
        .textMuted = 0xFF5C5248,
        .accent = 0xFFC45C3E,
        .success = 0xFF3D6B4F,
        .warning = 0xFF9A6B1F,
        .danger = 0xFFB53A2A,
    },
    DaypartPalette{
        .background = 0xFFF5F8FA,
        .surface = 0xFFE8EEF3,
        .surfaceElevated = 0xFFFFFFFF,
        .border = 0xFFD0DBE3,
        .text = 0xFF1A2332,
        .textMuted = 0xFF4A5568,
        .accent = 0xFF0D9488,
        .success = 0xFF1E7A4A,
        .warning = 0xFFA67C00,
        .danger = 0xFFC0392B,
    },
    DaypartPalette{
        .background = 0xFF1A1612,
        .surface = 0xFF221C17,
        .surfaceElevated = 0xFF2A221C,
        .border = 0xFF3A3028,
        .text = 0xFFF0E6D8,
        .textMuted = 0xFFA89888,
        .accent = 0xFFE8A54B,
        .success = 0xFF7FD99A,
        .warning = 0xFFE8A54B,
        .danger = 0xFFF07178,
    },
    DaypartPalette{
        .background = 0xFF0A0A0F,
        .surface = 0xFF12121A,
        .surfaceElevated = 0xFF1A1A24,
        .border = 0xFF2A2A38,
        .text = 0xFFE8E8F0,
        .textMuted = 0xFF8888A0,
        .accent = 0xFF00CCAA,
        .success = 0xFF50FA7B,
        .warning = 0xFFF1FA8C,
        .danger = 0xFFFF5555,
    },
};

}

const DaypartPalette& DaypartPalette::of(Daypart daypart) {
    return palettes[static_cast<std::size_t>(daypart)];
}
