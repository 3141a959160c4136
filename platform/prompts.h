#pragma once

#include "core/color.h"
#include "platform/drawing.h"

#include <optional>
#include <string>

namespace quorvane {

// Style numbers of a message box, and its answers.
namespace message_style {
inline constexpr int Stop = 16;
inline constexpr int StopQuestion = 20; // with Yes and No
inline constexpr int Question = 36;     // with Yes and No
inline constexpr int Warning = 48;
inline constexpr int Information = 64;
} // namespace message_style

enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

struct FileQuestion {
    std::string title;
    std::string filter; // "Bitmap files (*.bmp)|*.bmp|All files (*.*)|*.*"
    std::string directory;
    std::string name;     // preset file name
    int filterIndex = 1;  // chosen filter, from 1; the answer sets it
    bool forSave = false; // asks before a file is overwritten
    // Of a file to open: false also lets a name through that no file has, in a folder that is there.
    bool mustExist = true;
};

// Questions to the person. Each call waits for the answer; empty where the person cancelled.
class Prompts {
  public:
    virtual ~Prompts() = default;

    virtual Answer Message(const std::string& text, const std::string& title, int style) = 0;
    virtual std::optional<std::string> File(FileQuestion& question) = 0;
    virtual std::optional<FontSpec> Font(const FontSpec& preset) = 0;
    virtual std::optional<Color> PickColor(Color preset) = 0;
};

} // namespace quorvane
