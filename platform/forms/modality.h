#pragma once

#include <vector>

namespace quorvane {

class Form;

// Which windows a person may use while a modal one stands, by one rule at every host: what was shown before
// the topmost modal window is blocked until that one has gone; what is shown later is free. A question of the
// system's own is a modal window that is no form.
class Modality {
  public:
    // A form that is visible already keeps its place in the order, unless it becomes modal.
    void Shown(Form& form, bool modal);
    void Gone(Form& form);

    bool IsBlocked(const Form& form) const;
    bool IsModal(const Form& form) const;
    // Whether a window that has an entry in the task bar was shown before the form.
    bool IsOverEntry(const Form& form) const;
    // The form that blocks those before it; null for none, and below a question.
    Form* Topmost() const;

  private:
    friend class QuestionStands;
    struct Window {
        Form* form; // null for a question
        bool modal;
    };

    std::vector<Window>::const_iterator LastModal() const;
    void Tell();

    std::vector<Window> shown_; // in the order of showing
};

// A question of the system's own stands while one lives.
class QuestionStands {
  public:
    explicit QuestionStands(Modality& modality);
    ~QuestionStands();
    QuestionStands(const QuestionStands&) = delete;
    QuestionStands& operator=(const QuestionStands&) = delete;

  private:
    Modality& modality_;
};

} // namespace quorvane
