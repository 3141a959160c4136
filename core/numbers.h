#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// Numbers as text and back. "Locale" means the person's decimal sign, handed in as `separator`; everything
// else uses a point whatever the person's settings are.

// The shortest form of at most 15 significant digits: 0.5, 37.63388889, 1E+20.
std::string NumberText(double value);
std::string LocaleNumberText(double value, std::string_view separator);
// Single precision, at most 7 significant digits.
std::string LocaleNumberText(float value, std::string_view separator);
// As NumberText, but never with an exponent: 100000000000000000000, 0.00001.
std::string PlainNumberText(double value);
// As NumberText, with one leading blank where the number is not negative.
std::string SignedNumberText(double value);

// The number at the start of `text`, blanks passed over: sign, digits, one point, an exponent. It stops at
// the first character that is no part of a number; 0 where there is none.
double LeadingNumber(std::string_view text);

// Digits and one decimal sign, whichever of ".", "," and `separator` it is; stops at anything else. A sign in
// front therefore gives 0.
double ParseDecimal(std::string_view text, std::string_view separator);

// The whole of `text` as one number with the person's decimal sign. Throws TypeMismatch.
double LocaleTextToDouble(std::string_view text, std::string_view separator);
// A whole number, rounded half to even. Throws TypeMismatch or Overflow.
std::int32_t TextToInteger(std::string_view text, std::string_view separator);
// "True" or "False" in any letter case, or a number. Throws TypeMismatch.
bool TextToBoolean(std::string_view text);
std::string BooleanText(bool value);

// Rounded half to even, as the system rounds wherever a number becomes a whole one.
double RoundHalfEven(double value);
// The same as a 32-bit integer. Throws Overflow.
std::int32_t ToInteger(double value);

} // namespace quorvane
