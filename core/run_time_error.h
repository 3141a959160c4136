#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

namespace quorvane {

// A failure that ends the current routine. Number and words are the system's own; they reach the person
// through the error dialogue and the criteria editor's trial output.
class RunTimeError : public std::exception {
  public:
    RunTimeError(int number, std::string description)
        : number_(number)
        , description_(std::move(description)) {}

    int Number() const { return number_; }
    const std::string& Description() const { return description_; }
    const char* what() const noexcept override { return description_.c_str(); }

    static RunTimeError InvalidCall() { return {5, "Invalid procedure call or argument"}; }
    static RunTimeError Overflow() { return {6, "Overflow"}; }
    static RunTimeError SubscriptOutOfRange() { return {9, "Subscript out of range"}; }
    static RunTimeError DivisionByZero() { return {11, "Division by zero"}; }
    static RunTimeError TypeMismatch() { return {13, "Type mismatch"}; }
    static RunTimeError FileNotFound() { return {53, "File not found"}; }
    static RunTimeError PathNotFound() { return {76, "Path not found"}; }

  private:
    int number_;
    std::string description_;
};

// What any failure is in the system's numbers and words: 7 where memory ran out, 51, an internal error, where
// the system has no number of its own.
inline RunTimeError AsRunTimeError(const std::exception& failure) {
    if (const auto* own = dynamic_cast<const RunTimeError*>(&failure)) return *own;
    if (dynamic_cast<const std::bad_alloc*>(&failure)) return {7, "Out of memory"};
    return {51, failure.what()};
}

// Thrown by Session::End and caught only by the platform's event loop and by main: the process ends where it
// stands. It is no std::exception, so that passing over a failure never passes over the end.
struct ProcessEnd {
    int status = 0;
};

// The policy "passing over": the statement may fail, and the routine runs on at the next one, silently.
// Returns whether the statement went through.
template<typename Statement>
bool PassOver(Statement&& statement) {
    try {
        std::forward<Statement>(statement)();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace quorvane
