#pragma once

#include "alarms/criteria/words.h"
#include "core/run_time_error.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quorvane {

// The values of one class of leksems, in order of appearance. It has room for a hundred.
template<typename Value>
class ValueTable {
  public:
    // Throws SubscriptOutOfRange when the table is full.
    void Append(Value value) {
        if (count_ == values_.size()) throw RunTimeError::SubscriptOutOfRange();
        values_[count_++] = value;
    }
    std::size_t Count() const { return count_; }
    Value operator[](std::size_t at) const { return values_[at]; }

  private:
    std::array<Value, 100> values_;
    std::size_t count_ = 0;
};

// The place of a word in its table of words.h.
using WordTable = ValueTable<std::uint8_t>;

// A criterion as a string of leksems, one character each:
//
//   a constant, b system variable, c comparison, o low operator, p high operator, f function name,
//   - unary minus, and the brackets ( ) [ ] { } | themselves
//
// The nth leksem of a class has the nth value of the class's table.
struct ScannedCriterion {
    std::string leksems;
    ValueTable<double> constants;
    WordTable variables;
    WordTable comparisons;
    WordTable lowOperators;
    WordTable highOperators;
    WordTable functions;
    // What is wrong with the text, in the words for the person; empty where nothing is.
    std::string message;
};

// Blanks and tabs do not count, nor does the case of letters. Throws SubscriptOutOfRange for the 101st value
// of a class and Overflow for a constant that is too great.
ScannedCriterion ScanCriterion(std::string_view text);

} // namespace quorvane
