// What the checks know of attributes is what the library does.
#include "tools/vantakit/skincheck/catalogue.h"

#include <algorithm>
#include <set>

#include "lumo/controls/attribute_lists.h"
#include "lumo/controls/control_base.h"
#include "lumo/core/builder.h"
#include "lumo/core/global_resources.h"
#include "lumo/core/markup_document.h"
#include "lumo/core/window_attributes.h"
#include "tests/support/machine_fixture.h"
#include "tools/vantakit/skincheck/global_check.h"

namespace vantakit {
namespace {

using lumo::String;
using lumo::StringView;

class CatalogueTest : public testing_support::OnMachine {
 protected:
  void SetUp() override { Start(); }
  Catalogue catalogue_;
};

TEST_F(CatalogueTest, EveryListedAttributeIsTakenBySomeControlAndListedOnce) {
  std::set<String> names;
  for (const lumo::AttributeInfo& info : lumo::ControlAttributes()) {
    EXPECT_TRUE(names.insert(String(info.name)).second) << vanta::ToUtf8(info.name);
    const bool taken = std::ranges::any_of(lumo::ControlTags(), [&](const lumo::ControlTag& row) {
      return catalogue_.KindOf(row.tag, info.name) == info.kind;
    });
    EXPECT_TRUE(taken) << vanta::ToUtf8(info.name);
  }
  EXPECT_EQ(names.size(), 97u) << "48 of every control, 14 of texts, 14 of selections, 21 of boxes and single controls";
}

// How many of the list a control takes: what its layers add up to.
TEST_F(CatalogueTest, EachTagTakesWhatItsLayersTake) {
  constexpr int kEvery = 48, kBox = 3, kTile = 2, kText = 14, kCheck = 14, kGroup = 1, kBar = 6, kCircle = 7;
  const struct {
    StringView tag;
    int count;
  } rows[] = {
      {TEXT("Control"), kEvery},
      {TEXT("ScrollBar"), kEvery},
      {TEXT("Box"), kEvery + kBox},
      {TEXT("Combo"), kEvery + kBox},
      {TEXT("TileListBox"), kEvery + kBox + kTile},
      {TEXT("TabBox"), kEvery + kBox + 1},
      {TEXT("ChildBox"), kEvery + kBox + 1},
      {TEXT("Button"), kEvery + kText},
      {TEXT("ButtonBox"), kEvery + kBox + kText},
      {TEXT("CheckBox"), kEvery + kText + kCheck},
      {TEXT("Option"), kEvery + kText + kCheck + kGroup},
      {TEXT("MenuItem"), kEvery + kBox + kText + kCheck + kGroup},
      {TEXT("Slider"), kEvery + kText + kBar},
      {TEXT("CircleProgress"), kEvery + kText + kBar + kCircle},
  };
  for (const auto& row : rows) {
    int count = 0;
    for (const lumo::AttributeInfo& info : lumo::ControlAttributes())
      count += catalogue_.KindOf(row.tag, info.name).has_value();
    EXPECT_EQ(count, row.count) << vanta::ToUtf8(row.tag);
    EXPECT_FALSE(catalogue_.KindOf(row.tag, TEXT("nonsense"))) << vanta::ToUtf8(row.tag);
  }
}

TEST_F(CatalogueTest, TheWindowTakesWhatIsListed) {
  lumo::AttributeInfos infos;
  lumo::ListWindowAttributes(&infos);
  EXPECT_EQ(infos.size(), 11u);
  lumo::WindowAttributes attributes;
  for (const lumo::AttributeInfo& info : infos) {
    EXPECT_TRUE(lumo::SetWindowAttribute(attributes, info.name, TEXT("1"))) << vanta::ToUtf8(info.name);
  }
}

// Each attribute of a font, left out of it, leaves another font; one more changes nothing.
TEST_F(CatalogueTest, TheAttributesOfFontsAreThoseThatCount) {
  const auto describe = [](const std::string& attributes) {
    lumo::GlobalResources globals(6);
    lumo::MarkupDocument document;
    document.LoadText(
        vanta::FromUtf8("<Global><Font id='f' name='Ahem' size='1'/><Font " + attributes + "/></Global>"));
    globals.AddDocument(document);
    LOGFONTW font = {};
    globals.DescribeFont(TEXT("a"), 100, &font);
    return vanta::ToUtf8(font.lfFaceName) + "/" + std::to_string(font.lfHeight) + "/" + std::to_string(font.lfWeight) +
           "/" + std::to_string(font.lfUnderline) + std::to_string(font.lfStrikeOut) + std::to_string(font.lfItalic) +
           "/" + vanta::ToUtf8(globals.DefaultFontId());
  };
  const auto value_of = [](StringView name) {
    return name == TEXT("id") ? std::string("a") : name == TEXT("name") ? std::string("Face") : std::string("1");
  };
  std::string all;
  for (const lumo::AttributeInfo& info : GlobalAttributes(TEXT("Font"))) {
    all += vanta::ToUtf8(info.name) + "='" + value_of(info.name) + "' ";
  }
  for (const lumo::AttributeInfo& left_out : GlobalAttributes(TEXT("Font"))) {
    const std::string piece = vanta::ToUtf8(left_out.name) + "='" + value_of(left_out.name) + "' ";
    std::string others = all;
    others.erase(all.find(piece), piece.size());
    EXPECT_NE(describe(others), describe(all)) << piece;
  }
  EXPECT_EQ(describe(all + "weight='9' face='x'"), describe(all));
}

TEST(NearestOf, ASlipIsForgivenANewWordIsNot) {
  const std::vector<StringView> words = {TEXT("width"), TEXT("height"), TEXT("text"), TEXT("max")};
  EXPECT_EQ(NearestOf(words, TEXT("widht")), TEXT("width"));
  EXPECT_EQ(NearestOf(words, TEXT("TEXT")), TEXT("text"));
  EXPECT_EQ(NearestOf(words, TEXT("colour")), TEXT(""));
  EXPECT_EQ(NearestOf(words, TEXT("mxa")), TEXT("")) << "short words are soon near each other";
}

}  // namespace
}  // namespace vantakit
