#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quorvane {

// The fixed words of the criteria language and what they stand for.

// The order is that of the values in CriteriaMoment.
enum class SystemVariable : std::uint8_t {
    Year,
    Month,
    Day,
    Weekday, // Monday 1 to Sunday 7
    Hour,
    Minute,
    Second,
    WeekOfMonth, // weeks begin on Monday, the week that holds the first is 1
    Random,
};

enum class Operation : std::uint8_t {
    Constant,
    Variable,
    NoNumber, // an operand that cannot be converted to a number
    Add,
    Subtract,
    BitOr,
    Multiply,
    Divide,
    Modulo,
    BitAnd,
    Compare,
    Negate,
    Integer,
    Absolute,
    Fraction,
    Sine,
    Cosine,
    Tangent,
    Cotangent,
    ArcTangent,
    ArcCotangent,
    ArcCosine,
    ArcSine,
    NaturalLogarithm,
    DecimalLogarithm,
    SquareRoot,
    Square,
    CubeRoot,
    Exponential,
    PowerOfTen,
    Reciprocal,
    Store,
    Recall,
    Unknown, // a word that is none of the language's: its operands are taken, its result is no number
};

// How the left operand of a comparison may stand to the right one: a set of these bits.
using Relations = std::uint8_t;
inline constexpr Relations Less = 1;
inline constexpr Relations Equal = 2;
inline constexpr Relations Greater = 4;

template<typename Meaning>
struct CriteriaWord {
    std::string_view name;
    Meaning meaning;
};

inline constexpr std::array<CriteriaWord<SystemVariable>, 11> SystemVariableWords{{
    {"yy", SystemVariable::Year},
    {"mm", SystemVariable::Month},
    {"dd", SystemVariable::Day},
    {"wd", SystemVariable::Weekday},
    {"dw", SystemVariable::Weekday},
    {"hh", SystemVariable::Hour},
    {"nn", SystemVariable::Minute},
    {"ss", SystemVariable::Second},
    {"rr", SystemVariable::Random},
    {"wn", SystemVariable::WeekOfMonth},
    {"nw", SystemVariable::WeekOfMonth},
}};

inline constexpr std::array<CriteriaWord<Relations>, 10> ComparisonWords{{
    {"=", Equal},
    {"<", Less},
    {">", Greater},
    {"<>", Less | Greater},
    {"==", Equal},
    {"!=", Less | Greater},
    {"<=", Less | Equal},
    {"=<", Less | Equal},
    {">=", Greater | Equal},
    {"=>", Greater | Equal},
}};

inline constexpr std::array<CriteriaWord<Operation>, 3> LowOperatorWords{{
    {"+", Operation::Add},
    {"-", Operation::Subtract},
    {"^", Operation::BitOr},
}};

inline constexpr std::array<CriteriaWord<Operation>, 4> HighOperatorWords{{
    {"*", Operation::Multiply},
    {"/", Operation::Divide},
    {"\\", Operation::Modulo},
    {"&", Operation::BitAnd},
}};

inline constexpr std::array<CriteriaWord<Operation>, 18> FunctionWords{{
    {"fsin", Operation::Sine},
    {"fcos", Operation::Cosine},
    {"ftg", Operation::Tangent},
    {"fctg", Operation::Cotangent},
    {"fln", Operation::NaturalLogarithm},
    {"flg", Operation::DecimalLogarithm},
    {"fsqr", Operation::SquareRoot},
    {"f_2", Operation::Square},
    {"fexp", Operation::Exponential},
    {"f_10", Operation::PowerOfTen},
    {"frev", Operation::Reciprocal},
    {"fartg", Operation::ArcTangent},
    {"farctg", Operation::ArcCotangent},
    {"farccos", Operation::ArcCosine},
    {"farcsin", Operation::ArcSine},
    {"fsqr_3", Operation::CubeRoot},
    {"fst", Operation::Store},
    {"frst", Operation::Recall},
}};

// The place of a word in its table.
template<typename Meaning, std::size_t Count>
constexpr std::optional<std::uint8_t> FindWord(const std::array<CriteriaWord<Meaning>, Count>& words,
                                               std::string_view name) {
    if (name.empty()) return std::nullopt;
    for (std::size_t at = 0; at < Count; ++at) {
        if (words[at].name.front() == name.front() && words[at].name == name)
            return static_cast<std::uint8_t>(at);
    }
    return std::nullopt;
}

} // namespace quorvane
