#pragma once

#include <array>

namespace vantora {

struct PaperFormat {
    const char* name;
    double width, height; ///< millimetres, upright
};

/// Those that the PDF library tells apart, in the order of its codes, from 1: of ISO 216 and of
/// North America.
inline constexpr std::array<PaperFormat, 14> paperFormats = {{{"A0", 841, 1189},
                                                              {"A1", 594, 841},
                                                              {"A2", 420, 594},
                                                              {"A3", 297, 420},
                                                              {"A4", 210, 297},
                                                              {"A5", 148, 210},
                                                              {"A6", 105, 148},
                                                              {"B4", 250, 353},
                                                              {"B5", 176, 250},
                                                              {"Letter", 215.9, 279.4},
                                                              {"Legal", 215.9, 355.6},
                                                              {"Tabloid", 279.4, 431.8},
                                                              {"Executive", 184.15, 266.7},
                                                              {"Statement", 139.7, 215.9}}};

} // namespace vantora
