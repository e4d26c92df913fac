// The icon item of a dialog: which icon each selector value draws without icon services, which
// mosa-host cannot show. The tour and the custom_icon scenario walk through the rest.
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

  // With icon services (what the tour shows for each switch) a classic number means nothing.
  gIconServicesAvailable = 1;
  EXPECT_EQ(shown(kClassicIconNote), IconKind::None);

  gIconServicesAvailable = 0;
  EXPECT_EQ(shown(kClassicIconStop), IconKind::Stop);
  EXPECT_EQ(shown(kClassicIconNote), IconKind::Note);
  EXPECT_EQ(shown(kClassicIconCaution), IconKind::Caution);
  EXPECT_EQ(shown(kIconNote), IconKind::None);
  gIconServicesAvailable = 1;

  dialog.reset();
  toolkit::endSession();
}
