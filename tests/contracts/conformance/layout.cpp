#include "tests/contracts/conformance/conformance.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace quorvane {

LayoutForm::LayoutForm(Forms& forms)
    : Form(forms, "frmLayout") {
    SetCaption("Layout");
    picBelow.SetPreferred({2400, 1200});
    picBelow.SetBackColor(Rgb(60, 90, 160));
    txtHidden.SetVisible(false);
    txtRight.SetText("Text");
    lvwRows.lines = 3;
    lvwRows.SetColumns({{"Name", 2000}, {"State", 1500}});
    lvwRows.SetCheckBoxes(true);
    lvwRows.SetRows({{{"first", "on"}, true, ""}, {{"second", "off"}, false, ""}});
    tabMany.SetTabs({"&General", "&Wallpaper source(s)", "&Favorite wallpaper(s)",
                     "&Blacklisted wallpaper(s)", "&Screen capture", "Calen&dar", "Ala&rms", "Pr&ofiles",
                     "&Mouse tracking", "&Notes", "&Language", "Desktops", "Abou&t"});
    fraInside.SetLayout(Column({chkInside}));
    tabMany.SetLayout(Column({fraInside}));
    SetLayout(Column({
        Row({lblLeft, Place(txtRight).Stretched()}),
        Free({Place(picBelow), Place(cmdAbove).At({600, 300, 1200, 0}),
              Place(txtHidden).At({0, 0, 60000, 30000})}),
        tabMany,
        Place(lvwRows).Stretched(),
    }));
}

namespace {

// The controls' places, in the order of their declaration, and the width of the form.
struct Places {
    int width = 0;
    std::vector<PixelRect> areas;
};

Places PlacesOf(LayoutForm& form, Hands& hands) {
    hands.Settle();
    Places places{form.Host().Scale().PixelsX(form.ClientSize().width), {}};
    for (Control* control : form.Controls())
        places.areas.push_back(control->IsShown() ? hands.PlaceOf(*control) : PixelRect{});
    return places;
}

void CheckTabs(LayoutForm& form, Hands& hands) {
    EXPECT_GT(form.tabMany.TabRows().size(), 1U);
    EXPECT_LE(form.LeastSize().width, 1024 * 15);
    int clicks = 0;
    form.tabMany.onClick = [&] { ++clicks; };
    for (const int tab : {12, 0, 6, 5, 11, 1}) {
        hands.Choose(form.tabMany, tab);
        hands.Settle();
        EXPECT_EQ(form.tabMany.SelectedTab(), tab);
        EXPECT_EQ(hands.Shown(form.tabMany), form.tabMany.ValueText());
    }
    EXPECT_EQ(clicks, 6);
    form.tabMany.SelectTab(0);
}

} // namespace

void CheckLayout(LayoutForm& form, Hands& hands) {
    form.Show();
    const Places before = PlacesOf(form, hands);
    EXPECT_LT(form.LeastSize().height, 30000) << "what is hidden takes no room";
    EXPECT_EQ(hands.SeenAt(form.cmdAbove), &form.cmdAbove);
    EXPECT_EQ(hands.SeenAt(form.chkInside), &form.chkInside);
    form.cmdAbove.SetVisible(false);
    hands.Settle();
    EXPECT_EQ(hands.SeenAt(form.picBelow), &form.picBelow);
    form.cmdAbove.SetVisible(true);
    CheckTabs(form, hands);

    form.SetRightToLeft(true);
    const Places after = PlacesOf(form, hands);
    EXPECT_EQ(after.width, before.width);
    std::size_t i = 0;
    for (const Control* control : form.Controls()) {
        const PixelRect& left = before.areas[i];
        const PixelRect& right = after.areas[i++];
        EXPECT_EQ(right.y, left.y) << control->FullName();
        EXPECT_NEAR(right.width, left.width, 1) << control->FullName();
        if (left.width > 0) {
            EXPECT_NEAR(right.x, before.width - left.x - left.width, 1) << control->FullName();
        }
    }
    CheckTabs(form, hands);
    std::string log;
    form.txtRight.onChange = [&] { log = form.txtRight.Text(); };
    hands.Type(form.txtRight, "\xD7\x90\xD7\x91");
    EXPECT_EQ(log, "Text\xD7\x90\xD7\x91");
    CheckRows(form.lvwRows, hands);
    form.SetRightToLeft(false);
    EXPECT_EQ(PlacesOf(form, hands).areas, before.areas);
    form.Unload();
}

} // namespace quorvane
