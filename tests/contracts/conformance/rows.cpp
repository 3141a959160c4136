#include "tests/contracts/conformance/conformance.h"

#include <gtest/gtest.h>

namespace quorvane {

void CheckRows(ListView& list, Hands& hands) {
    std::string log;
    list.onItemClick = [&] { log += "row " + std::to_string(list.SelectedRow()) + "; "; };
    list.onItemCheck = [&](int row) { log += "box " + std::to_string(row) + "; "; };
    list.onDoubleClick = {};
    list.SetCheckBoxes(true);
    list.SetRows({{{"a", "1"}, true, ""}, {{"b", "2"}, false, ""}, {{"c", "3"}, true, ""}});
    const auto expect = [&](const std::string& events, const std::string& shown) {
        hands.Settle();
        EXPECT_EQ(log, events);
        EXPECT_EQ(hands.Shown(list), shown);
        EXPECT_EQ(list.ValueText(), shown);
        log.clear();
    };

    list.SetFocus();
    expect("", "-1 [x] \"a\"|\"1\" [ ] \"b\"|\"2\" [x] \"c\"|\"3\"");
    hands.CheckRow(list, 1);
    expect("box 1; ", "-1 [x] \"a\"|\"1\" [x] \"b\"|\"2\" [x] \"c\"|\"3\"");
    hands.Choose(list, 1);
    hands.CheckRow(list, 0);
    expect("row 1; box 0; ", "1 [ ] \"a\"|\"1\" [x] \"b\"|\"2\" [x] \"c\"|\"3\"");

    list.InsertRow(0, {{"first"}, false, ""});
    expect("", "2 [ ] \"first\"|\"\" [ ] \"a\"|\"1\" [x] \"b\"|\"2\" [x] \"c\"|\"3\"");
    list.RemoveRow(1);
    list.SetCell(1, 1, "two");
    list.AddRow({{"last", "9"}, false, ""});
    expect("", "1 [ ] \"first\"|\"\" [x] \"b\"|\"two\" [x] \"c\"|\"3\" [ ] \"last\"|\"9\"");
    list.RemoveRow(1);
    expect("", "-1 [ ] \"first\"|\"\" [x] \"c\"|\"3\" [ ] \"last\"|\"9\"");
    list.SelectRow(2);
    list.SetRows({{{"x", "y"}, true, ""}});
    expect("row 2; ", "-1 [x] \"x\"|\"y\"");
    list.SetColumns({{"One", 1500}, {"Two", 1500}, {"Three", 1500}});
    expect("", "-1 [x] \"x\"|\"y\"|\"\"");
    list.SetRows({});
    expect("", "-1");
}

} // namespace quorvane
