// The popups of instances, of opened templates and of embedded maps.
#include "document/classes/special_classes.h"
#include "document/picking.h"
#include "operations/template_editing.h"
#include "operations/templates.h"
#include "shell/app_fixture.h"

namespace ferrowand {
namespace {

class TemplatePopupTest : public AppTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(Start());
    map = &OpenTwoBrushes();
    Activate(WindowOf(Orientation::Top));
  }
  // The right button there, and that command of the menu.
  void PopUp(unsigned item, const Vec3& at) {
    dialogs.commands = {item};
    auto& window = WindowOf(Orientation::Top);
    const Pixel pixel = window.View()->transform.ToScreen(at);
    for (const UINT message : {WM_RBUTTONDOWN, WM_RBUTTONUP}) {
      SendMessageA(window.Drawing(), message, 0, MAKELPARAM(pixel.x, pixel.y));
    }
  }
  std::vector<std::string> Items() const {
    std::vector<std::string> items;
    const OwnedMenu menu = parts->popups.ForSelection(*map);
    for (int i = 0; i < GetMenuItemCount(menu.get()); ++i) {
      char text[100] = "-";
      GetMenuStringA(menu.get(), static_cast<UINT>(i), text, sizeof text, MF_BYPOSITION);
      items.emplace_back(text);
    }
    return items;
  }

  Map* map = nullptr;
};

TEST_F(TemplatePopupTest, ATemplateIsOpenedEditedRenamedClosedAndDeletedByIt) {
  const auto& brushes = map->currentLayer()->getEntityList();
  Select(*map, brushes[1].get(), false);
  ASSERT_EQ(MakeTemplate(*map, "R&D", {160, 0, 0}), EditResult::Done);
  const std::vector<std::string> items = Items();
  ASSERT_EQ(items.size(), 20u + 4);
  EXPECT_EQ(items[0], "Flip &X\tCtrl+H");
  EXPECT_EQ(items[15], "&Properties\tAlt+Enter");
  EXPECT_EQ(items[21], "Op&en template R&&D");
  PopUp(Id(Command::OpenTemplate), {160, 0, 0});
  ASSERT_EQ(map->selection.size(), 1u);
  EXPECT_EQ(SelectionBounds(*map), (Bounds{{128, -32, -32}, {192, 32, 32}}));
  EXPECT_EQ(Items()[21], "C&lose template R&&D");
  // The brush itself is what a click takes now.
  dialogs.answers = {{""}, {"crate"}};
  PopUp(Id(Command::RenameTemplate), {130, 0, 0});
  EXPECT_EQ(sink.OnlyText(), "A template needs a name");
  EXPECT_EQ(TemplateNames(*map), std::vector<std::string>{"crate"});
  map->selection.Clear();
  PopUp(Id(Command::CloseTemplate), {500, 500, 0});
  EXPECT_EQ(map->selection.size(), 1u);
  EXPECT_FALSE(IsOpened(*TemplateInUse(*map)));
  sink.messages.clear();
  sink.answers = {Answer::Yes};
  PopUp(Id(Command::DeleteTemplate), {160, 0, 0});
  EXPECT_EQ(sink.OnlyText(), "The template crate has 1 instance. Delete it too?");
  EXPECT_TRUE(TemplateNames(*map).empty());
  EXPECT_EQ(Items().size(), 20u);
}

TEST_F(TemplatePopupTest, AnEmbeddedMapHasItsOwnItemsInFront) {
  InsertEmbed(*map, "inner.map", {{-8, -8, -8}, {8, 8, 8}}, {300, 0, 0});
  const entity& embed = *map->selection.front();
  const std::vector<std::string> items = Items();
  EXPECT_EQ(items[0], "&Properties");
  EXPECT_EQ(items[1], "&Edit");
  EXPECT_EQ(items[3], "Flip &X\tCtrl+H");
  EXPECT_EQ(items[items.size() - 5], "Center and Z&oom\tQ");
  dialogs.answers = {{"other.map", "0", "0", "0", "64", "0", "64"},
                     {"inner.map", "0", "0", "0", "64", "32", "16.5"}};
  PopUp(Id(Command::EmbedProperties), {300, 0, 0});
  EXPECT_EQ(sink.OnlyText(), "On every axis the box must end beyond its beginning");
  EXPECT_EQ(EmbedBox(embed), (Bounds{{0, 0, 0}, {64, 32, 16.5f}}));
  EXPECT_EQ(dialogs.forms.back().rows[1].values, (std::vector<std::string>{"-8", "-8", "-8"}));
  EXPECT_EQ(map->undo.StepCount(), 2u);
  dir.Write("inner.map", TWO_BRUSHES);
  PopUp(Id(Command::EmbedEdit), {310, 8, 0});
  ASSERT_EQ(parts->documents.Maps().size(), 2u);
  EXPECT_NE(parts->documents.Maps()[1]->filename.find("inner.map"), std::string::npos);
}

TEST_F(TemplatePopupTest, SnappingAsksForTheGrid) {
  map->selection.Set({map->currentLayer()->getEntityList()[0].get()});
  dialogs.answers = {{"0"}, {"64"}};
  Give(Command::SnapToGrid);
  EXPECT_EQ(sink.messages.size(), 1u);
  EXPECT_EQ(SelectionBounds(*map), (Bounds{{-64, -64, -64}, {64, 64, 64}}));
}

}  // namespace
}  // namespace ferrowand
