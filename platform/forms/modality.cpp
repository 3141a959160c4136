#include "platform/forms/modality.h"

#include "platform/forms/form.h"

#include <algorithm>
#include <iterator>

namespace quorvane {

void Modality::Shown(Form& form, bool modal) {
    const auto known = std::find_if(shown_.begin(), shown_.end(),
                                    [&form](const Window& each) { return each.form == &form; });
    if (known != shown_.end()) {
        if (!modal) return;
        shown_.erase(known);
    }
    shown_.push_back({&form, modal});
    Tell();
}

void Modality::Gone(Form& form) {
    if (std::erase_if(shown_, [&form](const Window& each) { return each.form == &form; }) > 0) Tell();
}

// One behind the last modal window in the order; the beginning where there is none.
std::vector<Modality::Window>::const_iterator Modality::LastModal() const {
    return std::find_if(shown_.rbegin(), shown_.rend(), [](const Window& each) { return each.modal; }).base();
}

bool Modality::IsBlocked(const Form& form) const {
    const auto behind = LastModal();
    if (behind == shown_.begin()) return false;
    return std::any_of(shown_.begin(), std::prev(behind),
                       [&form](const Window& each) { return each.form == &form; });
}

bool Modality::IsModal(const Form& form) const {
    return std::any_of(shown_.begin(), shown_.end(),
                       [&form](const Window& each) { return each.form == &form && each.modal; });
}

bool Modality::IsOverEntry(const Form& form) const {
    for (const Window& each : shown_) {
        if (each.form == &form) return false;
        if (each.form && each.form->HasTaskBarEntry()) return true;
    }
    return false;
}

Form* Modality::Topmost() const {
    const auto behind = LastModal();
    return behind == shown_.begin() ? nullptr : std::prev(behind)->form;
}

// A host that is told may report, and what comes of that may show and hide forms.
void Modality::Tell() {
    const std::vector<Window> told = shown_;
    for (const Window& window : told) {
        const bool stillShown = std::any_of(shown_.begin(), shown_.end(), [&window](const Window& each) {
            return each.form && each.form == window.form;
        });
        if (stillShown && window.form->View()) window.form->View()->UpdateForm(FormAspect::Blocked);
    }
}

QuestionStands::QuestionStands(Modality& modality)
    : modality_(modality) {
    modality_.shown_.push_back({nullptr, true});
    modality_.Tell();
}

// The innermost question ends first.
QuestionStands::~QuestionStands() {
    const auto last = std::find_if(modality_.shown_.rbegin(), modality_.shown_.rend(),
                                   [](const Modality::Window& each) { return !each.form; });
    if (last != modality_.shown_.rend()) modality_.shown_.erase(std::next(last).base());
    modality_.Tell();
}

} // namespace quorvane
