#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace quorvane {

// A key that a hot key can have: its virtual-key code and the name it is chosen by.
struct VkMapping {
    std::int32_t ID = 0;
    std::string_view Name;
};

// The index of the last row, not their number: loops run from 0 to VK_MAP_COUNT inclusive.
inline constexpr std::int32_t VK_MAP_COUNT = 86;

// The store keeps a row's index, so the order of the rows is part of the stored form. Code 108 has no row.
// clang-format off
inline constexpr std::array<VkMapping, VK_MAP_COUNT + 1> VK_MAPPING{{
    {8, "BACKSPACE"}, {9, "TAB"}, {12, "CLEAR"}, {13, "ENTER"}, {19, "PAUSE"}, {20, "CAPS LOCK"}, {27, "ESC"},
    {32, "SPACEBAR"}, {33, "PAGE UP"}, {34, "PAGE DOWN"}, {35, "END"}, {36, "HOME"}, {37, "LEFT ARROW"},
    {38, "UP ARROW"}, {39, "RIGHT ARROW"}, {40, "DOWN ARROW"}, {44, "PRINT SCREEN"}, {45, "INS"}, {46, "DEL"},
    {48, "0"}, {49, "1"}, {50, "2"}, {51, "3"}, {52, "4"}, {53, "5"}, {54, "6"}, {55, "7"}, {56, "8"},
    {57, "9"}, {65, "A"}, {66, "B"}, {67, "C"}, {68, "D"}, {69, "E"}, {70, "F"}, {71, "G"}, {72, "H"},
    {73, "I"}, {74, "J"}, {75, "K"}, {76, "L"}, {77, "M"}, {78, "N"}, {79, "O"}, {80, "P"}, {81, "Q"},
    {82, "R"}, {83, "S"}, {84, "T"}, {85, "U"}, {86, "V"}, {87, "W"}, {88, "X"}, {89, "Y"}, {90, "Z"},
    {91, "Left Windows key (Microsoft Natural keyboard)"}, {92, "Right Windows key (Natural keyboard)"},
    {95, "Computer Sleep"},
    {96, "Numeric pad 0"}, {97, "Numeric pad 1"}, {98, "Numeric pad 2"}, {99, "Numeric pad 3"},
    {100, "Numeric pad 4"}, {101, "Numeric pad 5"}, {102, "Numeric pad 6"}, {103, "Numeric pad 7"},
    {104, "Numeric pad 8"}, {105, "Numeric pad 9"}, {106, "*"}, {107, "+"}, {109, "-"}, {110, "."}, {111, "/"},
    {112, "F1"}, {113, "F2"}, {114, "F3"}, {115, "F4"}, {116, "F5"}, {117, "F6"}, {118, "F7"}, {119, "F8"},
    {120, "F9"}, {121, "F10"}, {122, "F11"}, {123, "F12"}, {144, "NUM LOCK"}, {145, "SCROLL LOCK"},
}};
// clang-format on

} // namespace quorvane
