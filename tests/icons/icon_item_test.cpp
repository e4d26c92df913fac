// The icon item of a dialog: which icon each selector value draws, with and without icon services,
// and the custom picture only while one is stored.
#include <gtest/gtest.h>

#include "icons/icons.h"
#include "toolkit/dialog.h"
#include "toolkit/session.h"

using toolkit::IconKind;

TEST(IconItem, SelectorsDrawTheirIcons) {
  toolkit::SessionOptions options;
  options.backend = toolkit::Backend::Headless;
  toolkit::configureSession(options);
  toolkit::DialogTemplate tmpl;
  tmpl.id = 24272;
  tmpl.width = 300;
  tmpl.height = 100;
  tmpl.items = {{1, toolkit::ItemKind::Button, {200, 60, 280, 80}, u"OK"},
                {6, toolkit::ItemKind::Icon, {10, 10, 42, 42}, u""}};
  auto dialog = toolkit::DialogWindow::create(tmpl);
  ASSERT_TRUE(dialog);
  auto shown = [&](std::int32_t selector) {
    Zk7_Mac_IconUserItem(*dialog, 6, selector);
    return dialog->icon(6);
  };

  gIconServicesAvailable = 1;
  EXPECT_EQ(shown(kIconNote), IconKind::Note);
  EXPECT_EQ(shown(kIconCaution), IconKind::Caution);
  EXPECT_EQ(shown(kIconStop), IconKind::Stop);
  EXPECT_EQ(shown(kIconNone), IconKind::None);
  EXPECT_EQ(shown(kClassicIconNote), IconKind::None);  // a classic number means nothing here

  gIconServicesAvailable = 0;
  EXPECT_EQ(shown(kClassicIconStop), IconKind::Stop);
  EXPECT_EQ(shown(kClassicIconNote), IconKind::Note);
  EXPECT_EQ(shown(kClassicIconCaution), IconKind::Caution);
  EXPECT_EQ(shown(kIconNote), IconKind::None);
  gIconServicesAvailable = 1;

  // The custom picture: nothing while none is stored or it cannot be drawn.
  EXPECT_EQ(shown(kIconCustom), IconKind::None);
  gCustomIconPict = new Zk7Picture{{1, 2, 3}, {}};
  EXPECT_EQ(shown(kIconCustom), IconKind::None);
  gCustomIconPict->image.width = gCustomIconPict->image.height = 1;
  gCustomIconPict->image.pixels = {0xFF112233u};
  EXPECT_EQ(shown(kIconCustom), IconKind::Custom);
  Zk7DeleteAllCustomIconData();
  EXPECT_EQ(shown(kIconCustom), IconKind::None);
  dialog.reset();
  toolkit::endSession();
}
