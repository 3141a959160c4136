#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/linux/desktop/event_loop.h"
#include "platform/linux/drawing/drawing.h"
#include "platform/linux/forms/form_host.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <cstdlib>

// A long list on the screen: what a row, and a letter in a row, cost with all that the toolkit does for them.

namespace quorvane {
namespace {

class ListForm : public Form {
  public:
    explicit ListForm(Forms& forms)
        : Form(forms, "frmList") {
        list.SetColumns({{"Name", 3000}, {"Folder", 4000}});
        list.SetCheckBoxes(true);
        SetLayout(Column({Place(list).Stretched()}));
    }
    void Add(int rows) {
        for (int row = 0; row < rows; ++row)
            list.AddRow({{"picture " + std::to_string(row) + ".jpg", "/pictures"}, row % 2 == 0, ""});
    }

    ListView list{*this, "list"};
};

struct Screen {
    QtEventLoop events;
    LinuxDrawing drawing;
    QtFormHost host;
    Forms forms{host, events, drawing};
};

void AddRows(benchmark::State& state) {
    Screen screen;
    for (auto _ : state) {
        ListForm form(screen.forms);
        form.Show();
        screen.events.Pump();
        form.Add(static_cast<int>(state.range(0)));
        screen.events.Pump();
        form.Unload();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(AddRows)->Arg(500)->Arg(8'000)->Unit(benchmark::kMillisecond);

void ChangeALetter(benchmark::State& state) {
    Screen screen;
    ListForm form(screen.forms);
    form.Add(static_cast<int>(state.range(0)));
    form.Show();
    screen.events.Pump();
    int round = 0;
    for (auto _ : state) {
        form.list.SetCell(static_cast<int>(state.range(0)) / 2, 0, std::to_string(++round));
        screen.events.Pump();
    }
    form.Unload();
}
BENCHMARK(ChangeALetter)->Arg(64)->Arg(4'096)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quorvane

// Offscreen unless told otherwise: the X server's part is no part of this.
int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
