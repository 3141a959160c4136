#include "alarms/criteria/lexer.h"

#include "core/numbers.h"
#include "core/text.h"
#include "core/utf8.h"

namespace quorvane {
namespace {

// A constant, a variable or a comparison is collected until a character of another sort ends it.
enum class Collecting { Nothing, Constant, Variable, Comparison, Function };

std::string WithoutBlanks(std::string_view text) {
    std::string result(text.size(), '\0');
    std::size_t size = 0;
    bool plain = true;
    for (const char c : text) {
        if (c == ' ' || c == '\t') continue;
        result[size++] = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        plain = plain && (c & 0x80) == 0;
    }
    result.resize(size);
    return plain ? result : LowerCase(result);
}

// The characters behind which "-" is a unary minus. The opening brace is not among them.
bool MakesMinusUnary(char previous) {
    return std::string_view("*/\\&=<>+-^([|").find(previous) != std::string_view::npos;
}

class Lexer {
  public:
    explicit Lexer(std::string_view text)
        : text_(WithoutBlanks(text)) {
        scanned_.leksems.reserve(text_.size());
    }

    ScannedCriterion Scan() {
        bool going = true;
        while (going && at_ < text_.size())
            going = collecting_ == Collecting::Function ? ScanInFunction() : ScanOutside();
        // A function name at the very end is dropped without a word.
        if (going && collecting_ != Collecting::Function) Flush();
        return std::move(scanned_);
    }

  private:
    // Both take the character at `at_`, or more, and are false once the text has turned out wrong.
    bool ScanInFunction();
    bool ScanOutside();

    bool ScanNumber(char c);
    bool ScanLowOperator(char c);
    bool ScanHighOperator(char c);
    bool ScanBracket(char c);

    // Ends what is being collected, unless it is `kept`, and appends its leksem.
    bool Flush(Collecting kept = Collecting::Nothing);
    bool Collect(Collecting what) {
        if (!Flush(what)) return false;
        if (collecting_ != what) Begin(what);
        tokenEnd_ = at_;
        return true;
    }
    bool Fail(std::string_view what, std::string_view token, std::string_view dash = " - ") {
        scanned_.message.append("Lexical ERROR!").append(dash).append(what);
        scanned_.message.append(" [").append(token).append("]");
        return false;
    }
    bool FailIllegal(std::string_view what, std::string_view token, std::string_view dash = " - ") {
        Fail(what, token, dash);
        scanned_.message += '!';
        return false;
    }
    template<typename Words>
    bool EnterWord(const Words& words, WordTable& table, char leksem, std::string_view what) {
        const auto word = FindWord(words, Token());
        if (!word) return FailIllegal(what, Token());
        table.Append(*word);
        scanned_.leksems.push_back(leksem);
        return true;
    }

    // What is collected stands in the text without a gap, up to the character that was taken last.
    void Begin(Collecting what) {
        collecting_ = what;
        tokenBegin_ = at_ - 1;
        tokenEnd_ = at_;
    }
    void End() {
        collecting_ = Collecting::Nothing;
        tokenBegin_ = tokenEnd_ = 0;
    }
    std::string_view Token() const {
        return std::string_view(text_).substr(tokenBegin_, tokenEnd_ - tokenBegin_);
    }

    const std::string text_;
    std::size_t at_ = 0;
    Collecting collecting_ = Collecting::Nothing;
    std::size_t tokenBegin_ = 0;
    std::size_t tokenEnd_ = 0;
    bool hasDot_ = false;
    ScannedCriterion scanned_;
};

bool Lexer::Flush(Collecting kept) {
    if (collecting_ == kept) return true;
    bool good = true;
    switch (collecting_) {
    case Collecting::Constant:
        scanned_.constants.Append(LeadingNumber(Token()));
        scanned_.leksems.push_back('a');
        hasDot_ = false;
        break;
    case Collecting::Variable:
        good = EnterWord(SystemVariableWords, scanned_.variables, 'b', "Illegal system variable");
        break;
    case Collecting::Comparison:
        good = EnterWord(ComparisonWords, scanned_.comparisons, 'c', "Illegal compare operation");
        break;
    case Collecting::Nothing:
    case Collecting::Function:
        break;
    }
    End();
    return good;
}

// Everything up to "(" belongs to the name, but for operators and brackets, which are wrong here.
bool Lexer::ScanInFunction() {
    static constexpr std::string_view IllegalName = "Illegal function name";
    const char c = text_[at_++];
    switch (c) {
    case 'f':
        Begin(Collecting::Function); // anew
        return true;
    case '(':
        if (!EnterWord(FunctionWords, scanned_.functions, 'f', IllegalName)) return false;
        End();
        return ScanBracket(c);
    case '=':
    case '<':
    case '>':
    case '!':
        return FailIllegal(IllegalName, Token(), "  - "); // two blanks in this one message
    case '+':
    case '-':
    case '^':
    case '*':
    case '/':
    case '\\':
    case '&':
    case ')':
    case '[':
    case ']':
    case '|':
    case '{':
    case '}':
        return FailIllegal(IllegalName, Token());
    default:
        tokenEnd_ = at_;
        return true;
    }
}

bool Lexer::ScanOutside() {
    const char c = text_[at_++];
    switch (c) {
    case 'f':
        return Collect(Collecting::Function);
    case '0':
    case '1':
    case '2':
    case '3':
    case '4':
    case '5':
    case '6':
    case '7':
    case '8':
    case '9':
    case '.':
        return ScanNumber(c);
    case '+':
    case '-':
    case '^':
        return ScanLowOperator(c);
    case '*':
    case '/':
    case '\\':
    case '&':
        return ScanHighOperator(c);
    case '=':
    case '<':
    case '>':
    case '!':
        return Collect(Collecting::Comparison);
    case 'y':
    case 'm':
    case 'd':
    case 'w':
    case 'h':
    case 'n':
    case 's':
    case 'r':
        return Collect(Collecting::Variable);
    case '(':
    case ')':
    case '[':
    case ']':
    case '|':
    case '{':
    case '}':
        return ScanBracket(c);
    default:
        return Fail("Error at",
                    std::string(Token()).append(text_, at_ - 1, NextLetter(text_, at_ - 1) - (at_ - 1)));
    }
}

bool Lexer::ScanNumber(char c) {
    if (c == '.') {
        if (hasDot_) return FailIllegal("Illegal float value", std::string(Token()).append("."));
        hasDot_ = true;
    }
    return Collect(Collecting::Constant);
}

bool Lexer::ScanLowOperator(char c) {
    const bool first = at_ == 1;
    if (!first && !Flush()) return false;
    if (c == '-' && (first || MakesMinusUnary(text_[at_ - 2]))) {
        scanned_.leksems.push_back('-');
        return true;
    }
    scanned_.lowOperators.Append(*FindWord(LowOperatorWords, {&c, 1}));
    scanned_.leksems.push_back('o');
    return true;
}

bool Lexer::ScanHighOperator(char c) {
    if (!Flush()) return false;
    scanned_.highOperators.Append(*FindWord(HighOperatorWords, {&c, 1}));
    scanned_.leksems.push_back('p');
    return true;
}

bool Lexer::ScanBracket(char c) {
    if (!Flush()) return false;
    scanned_.leksems.push_back(c);
    return true;
}

} // namespace

ScannedCriterion ScanCriterion(std::string_view text) {
    return Lexer(text).Scan();
}

} // namespace quorvane
