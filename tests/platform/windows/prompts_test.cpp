#include "platform/forms/menu.h"
#include "platform/windows/base/wide.h"
#include "platform/windows/desktop/event_loop.h"
#include "platform/windows/desktop/tray.h"
#include "platform/windows/drawing/drawing.h"
#include "platform/windows/forms/form_host.h"
#include "platform/windows/forms/form_view.h"
#include "platform/windows/forms/prompts.h"
#include "tests/contracts/conformance/conformance.h"

#include <gtest/gtest.h>

namespace quorvane {
namespace {

class PromptsTest : public testing::Test {
  protected:
    // Waits for a window of the title and does something to it, once.
    void When(const wchar_t* title, std::function<void(HWND)> act) {
        timer_ = events_.StartTimer("person", 30, [this, title, act = std::move(act)] {
            const HWND window = FindWindowW(nullptr, title);
            if (!window || !IsWindowVisible(window)) return;
            events_.StopTimer(timer_);
            wchar_t text[400]{};
            for (HWND child = nullptr; (child = FindWindowExW(window, child, L"Static", nullptr));) {
                GetWindowTextW(child, text, 400);
                words_ += Utf8(text);
            }
            GetDlgItemTextW(window, IDOK, text, 400);
            button_ = Utf8(text);
            act(window);
        });
    }
    static std::function<void(HWND)> Press(WORD button) {
        return [button](HWND window) { PostMessageW(window, WM_COMMAND, button, 0); };
    }

    WindowsEventLoop events_;
    WindowsDrawing drawing_;
    WindowsFormHost host_{events_};
    WindowsPrompts prompts_{host_, events_};
    Forms forms_{host_, events_, drawing_};
    std::string words_;
    std::string button_; // the one that agrees
    TimerId timer_ = 0;
};

TEST_F(PromptsTest, MessagesComeWithTheirWordsAndAnswers) {
    When(L"Error!", Press(IDYES));
    EXPECT_EQ(prompts_.Message("Terminate application? Да", "Error!", message_style::StopQuestion),
              Answer::Yes);
    EXPECT_NE(words_.find("Terminate application? Да"), std::string::npos);
    When(L"Error!", Press(IDNO));
    EXPECT_EQ(prompts_.Message("Terminate?", "Error!", message_style::Question), Answer::No);
    When(L"Quorvane II", Press(IDOK));
    EXPECT_EQ(prompts_.Message("Done", "Quorvane II", message_style::Information), Answer::Ok);
    EXPECT_EQ(button_, "Ok");
}

TEST_F(PromptsTest, ABoxWithoutAnOwnerStandsInTheMiddleAndBlocksTheForms) {
    SmallForm form(forms_, "frmNote");
    form.Show();
    SetActiveWindow(nullptr);
    ShowWindow(static_cast<WindowsFormView*>(form.View())->Window(), SW_HIDE);
    POINT middle{};
    bool blocked = false;
    HWND owner = nullptr;
    When(L"Quorvane II", [&](HWND window) {
        RECT area{};
        GetWindowRect(window, &area);
        middle = {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
        blocked = form.IsBlocked();
        owner = GetWindow(window, GW_OWNER);
        Press(IDOK)(window);
    });
    prompts_.Message("Done", "Quorvane II", message_style::Information);
    RECT work{};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
    EXPECT_NEAR(middle.x, (work.left + work.right) / 2, 2);
    EXPECT_NEAR(middle.y, (work.top + work.bottom) / 2, 2);
    EXPECT_EQ(owner, events_.Window()) << "no entry in the task bar";
    EXPECT_TRUE(blocked);
    EXPECT_FALSE(form.IsBlocked());
}

TEST_F(PromptsTest, CommonBoxesCanBeCancelled) {
    FileQuestion question{
        "Select wallpaper", "Picture files (*.bmp)|*.bmp|All files (*.*)|*.*", "C:\\", "", 1, false};
    When(L"Select wallpaper", Press(IDCANCEL));
    EXPECT_EQ(prompts_.File(question), std::nullopt);
    question.title = "Save capture";
    question.forSave = true;
    question.name = "capture.bmp";
    When(L"Save capture", Press(IDOK));
    const auto chosen = prompts_.File(question);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(*chosen, "C:\\capture.bmp");
    EXPECT_EQ(question.filterIndex, 1);

    FileQuestion folder{"Select directory", "All files (*.*)|*.*", "C:\\windows", "$DIR$", 1, false, false};
    When(L"Select directory", Press(IDOK));
    EXPECT_EQ(prompts_.File(folder), "C:\\windows\\$DIR$") << "no file has this name";
}

TEST_F(PromptsTest, TheTrayTakesAnIconAndTellsOfClicks) {
    WindowsTray tray(events_);
    std::vector<int> told;
    tray.OnMessage([&](int message) { told.push_back(message); });
    TrayRecord record;
    record.tip = std::string(200, 'x') + "Ж";
    EXPECT_TRUE(tray.Add(record));
    record.tip = "Quorvane II";
    record.balloonTitle = "Quorvane II";
    record.balloonText = "Wallpaper: [sea.jpg]";
    record.flags = 31;
    record.balloonIcon = 1;
    EXPECT_TRUE(tray.Modify(record));
    EXPECT_TRUE(tray.SetVersion(3));
    for (const LPARAM mouse : {WM_MOUSEMOVE, WM_LBUTTONDBLCLK, WM_RBUTTONUP})
        SendMessageW(events_.Window(), 512, 1, mouse);
    EXPECT_EQ(told, (std::vector<int>{tray_message::LeftDoubleClick, tray_message::RightButtonUp}));
    const auto newArea = [&] {
        SendMessageW(events_.Window(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
    };
    newArea();
    EXPECT_TRUE(tray.Modify(record)) << "the same area at another scale";
    NOTIFYICONDATAW gone{};
    gone.cbSize = sizeof gone;
    gone.hWnd = events_.Window();
    gone.uID = 1;
    EXPECT_TRUE(Shell_NotifyIconW(NIM_DELETE, &gone)) << "the area goes and takes it along";
    newArea();
    EXPECT_TRUE(Shell_NotifyIconW(NIM_DELETE, &gone)) << "it was there again";
    EXPECT_TRUE(tray.Modify(record)) << "an icon that the area lost is offered again";
    tray.Remove();
    newArea();
    EXPECT_FALSE(tray.Modify(record)) << "it is gone";
}

TEST_F(PromptsTest, AMenuAnswersWithWhatWasChosen) {
    WindowsTray tray(events_);
    Menu menu;
    int chosen = 0;
    menu.Add("first", 0, "&First", [&] { chosen = 1; });
    menu.AddSeparator();
    menu.Add("second", 0, "&Second", [&] { chosen = 2; });
    int ticks = 0;
    events_.StartTimer("engine", 10, [&] { ++ticks; });
    const DWORD begin = GetTickCount();
    bool due = false;
    const std::function<void()> pick = [&] {
        // The timer would have ticked between the two looks: its moment has passed before the second.
        if (!FindWindowW(L"#32768", nullptr) || !std::exchange(due, GetTickCount() - begin > 30))
            return events_.Post(pick);
        EXPECT_EQ(ticks, 0) << "timers are held";
        menu.Clear();                                         // what is shown stays good
        tray.Popup(menu);                                     // a second one does not open
        PostMessageW(events_.Window(), WM_KEYDOWN, VK_UP, 1); // the last entry
        PostMessageW(events_.Window(), WM_KEYDOWN, VK_RETURN, 1);
    };
    events_.Post(pick);
    tray.Popup(menu);
    EXPECT_EQ(chosen, 2);
    events_.RunWhile([&] { return ticks == 0; });
}

} // namespace
} // namespace quorvane
