// The button bar's records on the host: unknown properties, the cumulative
// button properties, the list, matching, both layouts with their quirks,
// the needed sizes and drops.
#include "controls/barcore.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "frame/alloc.h"
#include "frame/host/hostplat.h"
#include "testutil.h"

namespace {

struct Shape {
  int32_t w, h;
  uint32_t flags;
};

class Bar : public ::testing::Test {
 protected:
  void SetUp() override {
    bar_ = tv::BarRecord{};
    tv::InitBarRecord(&bar_);
    bar_.window = reinterpret_cast<HWND>(0x1234);
  }
  void TearDown() override { tv::DeleteAllButtons(&bar_, nullptr); }
  void Add(const std::vector<Shape> &shapes) {
    for (const Shape &s : shapes)
      ASSERT_TRUE(tv::NewButton(&bar_, 1, nullptr, nullptr, 0, s.h, s.w, s.flags, nullptr));
  }
  tv::BarButton *At(int i) {
    tv::BarButton *b = bar_.first;
    while (i-- > 0 && b) b = b->next;
    return b;
  }
  // "l,t,r,b l,t,r,b ..." of every button in list order.
  std::string Rects() {
    std::string s;
    for (tv::BarButton *b = bar_.first; b; b = b->next)
      s += (s.empty() ? "" : " ") + std::to_string(b->rect.left) + "," +
           std::to_string(b->rect.top) + "," + std::to_string(b->rect.right) + "," +
           std::to_string(b->rect.bottom);
    return s;
  }
  // Ids in list order; the backward links must agree.
  std::vector<int32_t> Ids() {
    std::vector<int32_t> ids, back;
    for (tv::BarButton *b = bar_.first; b; b = b->next) ids.push_back(b->id);
    for (tv::BarButton *b = bar_.last; b; b = b->prev) back.insert(back.begin(), b->id);
    EXPECT_EQ(ids, back) << "prev links";
    return ids;
  }
  tv::BarRecord bar_;
};

TEST_F(Bar, ButtonLongPropertiesStoreCumulatively) {
  struct Row {
    int id;
    int32_t value, wantId, wantFlags, want9;
  } rows[] = {{2, 5, 5, 5, 5}, {6, 12, 1, 12, 12}, {9, 3, 1, 2, 3}, {10, 7, 1, 2, 0}, {1, 7, 1, 2, 0}};
  for (const Row &r : rows) {
    tv::BarButton b{};
    b.marker = tv::kButtonMarker;
    b.id = 1;
    b.flags = 2;
    tv::SetButtonLong(&b, r.id, r.value);
    EXPECT_EQ(tv::GetButtonLong(&b, 2), r.wantId) << "set " << r.id;
    EXPECT_EQ(tv::GetButtonLong(&b, 6), r.wantFlags) << "set " << r.id;
    EXPECT_EQ(tv::GetButtonLong(&b, 9), r.want9) << "set " << r.id;
  }
}

TEST_F(Bar, TextsAreOwnedCopies) {
  tv::BarButton *b = tv::NewButton(&bar_, 1, u"k", u"n", 3, 10, 10, 0, nullptr);
  ASSERT_TRUE(b);
  EXPECT_EQ(tv::GetButtonLong(b, 10), 0x1234);
  std::u16string caption(10000, u'c');
  for (int id : {1, 3, 4, 5, 7, 8}) {
    ASSERT_TRUE(tv::SetButtonText(b, id, caption.c_str()));
    EXPECT_EQ(std::u16string(*tv::ButtonText(b, id)), caption) << id;
    EXPECT_NE(*tv::ButtonText(b, id), caption.c_str());
    ASSERT_TRUE(tv::SetButtonText(b, id, nullptr));
    EXPECT_EQ(*tv::ButtonText(b, id), nullptr);
  }
  // Out of memory: the old text stays.
  tv::SetButtonText(b, 5, u"old");
  tv::plat::host::SetFailAllocations(true);
  EXPECT_FALSE(tv::SetButtonText(b, 5, u"new"));
  EXPECT_FALSE(tv::NewButton(&bar_, 1, nullptr, nullptr, 0, 1, 1, 0, nullptr));
  tv::plat::host::SetFailAllocations(false);
  EXPECT_EQ(std::u16string(*tv::ButtonText(b, 5)), u"old");
  EXPECT_EQ(bar_.count, 1);
}

TEST_F(Bar, InsertBeforeOnlyButtonsOfThisBar) {
  auto add = [&](int id, tv::BarButton *before) {
    return tv::NewButton(&bar_, 1, nullptr, nullptr, id, 1, 1, 0, before);
  };
  tv::BarButton *one = add(1, nullptr);
  add(2, nullptr);
  add(0, one);  // new head
  add(5, At(2));
  EXPECT_EQ(Ids(), (std::vector<int32_t>{0, 1, 5, 2}));
  tv::BarRecord other{};
  tv::InitBarRecord(&other);
  other.window = reinterpret_cast<HWND>(0x5678);
  tv::BarButton fake{};
  add(6, tv::NewButton(&other, 1, nullptr, nullptr, 9, 1, 1, 0, nullptr));
  add(7, &fake);  // no marker
  EXPECT_EQ(Ids(), (std::vector<int32_t>{0, 1, 5, 2, 6, 7}));
  tv::DeleteButton(&bar_, At(0), nullptr);
  tv::DeleteButton(&bar_, bar_.last, nullptr);
  EXPECT_EQ(Ids(), (std::vector<int32_t>{1, 5, 2, 6}));
  EXPECT_EQ(bar_.count, 4);
  tv::DeleteAllButtons(&other, nullptr);
}

TEST_F(Bar, MatchingAndFinding) {
  tv::NewButton(&bar_, 1, u"open", u"Open", 1, 1, 1, 0, nullptr);
  tv::NewButton(&bar_, 1, nullptr, nullptr, 2, 1, 1, 0, nullptr);
  tv::NewButton(&bar_, 1, u"open", u"open", 3, 1, 1, 0, nullptr);
  struct Row {
    const char16_t *key, *name;
    int32_t id;
    std::vector<int32_t> found;
  } rows[] = {
      {nullptr, nullptr, 0, {1, 2, 3}}, {u"open", nullptr, 0, {1, 3}},
      {nullptr, u"Open", 0, {1}},  // exact case
      {u"", u"", -4, {2}},         // absent texts count as ""
      {nullptr, nullptr, 3, {3}},       {u"open", u"open", 1, {}}, {u"OPEN", nullptr, 0, {}},
  };
  for (const Row &r : rows) {
    std::vector<int32_t> found;
    for (tv::BarButton *b = nullptr; (b = tv::FindButton(&bar_, r.key, r.name, r.id, b));)
      found.push_back(b->id);
    EXPECT_EQ(found, r.found) << Narrow(r.key) << "/" << Narrow(r.name) << "/" << r.id;
  }
}

// Arranged rectangles (rects) and the needed height (height; the vertical
// walk over the same buttons with the axes exchanged needs one pixel more).
TEST_F(Bar, LayoutsAndNeededSizes) {
  struct Row {
    const char *what;
    int32_t arrangement, width, height, wrap, gap;
    std::vector<Shape> buttons;
    const char *rects;  // nullptr: not arranged
    int32_t needed;     // -1: not asked
  } rows[] = {
      {"one row, gap 2", 1, 200, 100, 0, 2, {{20, 10, 0}, {30, 12, 0}}, "4,4,24,14 26,4,56,16", -1},
      {"no wrap however narrow; flag 2 still breaks", 1, 30, 100, 0, 0,
       {{20, 10, 0}, {20, 10, 0}, {20, 16, 2}, {20, 10, 0}},
       "4,4,24,14 24,4,44,14 4,24,24,40 24,24,44,34", -1},
      // The next row moves by the height including the button that wraps.
      {"wrap", 1, 60, 100, 1, 0, {{20, 10, 0}, {20, 10, 0}, {20, 30, 0}, {20, 10, 0}},
       "4,4,24,14 24,4,44,14 4,38,24,68 24,38,44,48", -1},
      {"group gap inside a row only", 1, 200, 100, 0, 0, {{20, 10, 4}, {20, 10, 4}, {20, 10, 6}},
       "4,4,24,14 32,4,52,14 4,18,24,28", -1},
      {"wrap test includes the gap", 1, 56, 100, 1, 4, {{20, 10, 0}, {20, 10, 0}},
       "4,4,24,14 4,18,24,28", -1},
      // Vertical: the first button is 8 down; the third wraps, and the new
      // column moves by its own width of 30.
      {"vertical, group gap at the top", 2, 100, 60, 1, 0, {{10, 20, 4}, {12, 20, 0}, {30, 20, 0}},
       "4,12,14,32 4,32,16,52 38,4,68,24", -1},
      {"no buttons", 1, 100, 0, 0, 0, {}, nullptr, 8},
      // The last row starts below the height of the button that wrapped.
      {"wrapped", 1, 60, 0, 1, 0, {{20, 10, 0}, {20, 10, 0}, {20, 30, 0}}, nullptr,
       4 + (4 + 30 + 4) + 30},
      // A group gap at the start of a line counts, and then flag 2 finds
      // the line already begun: an empty line more.
      {"group and new line at the start", 1, 200, 0, 0, 0, {{20, 10, 6}}, nullptr,
       4 + (4 + 10 + 4) + 10},
  };
  for (const Row &r : rows) {
    SetUp();
    tv::SetBarLong(&bar_, tv::kPropArrangement, r.arrangement);
    tv::SetBarLong(&bar_, tv::kPropWrap, r.wrap);
    tv::SetBarLong(&bar_, tv::kPropGap, r.gap);
    Add(r.buttons);
    if (r.rects) {
      tv::ArrangeButtons(&bar_, r.width, r.height);
      EXPECT_EQ(Rects(), r.rects) << r.what;
    } else {
      EXPECT_EQ(tv::CalculateHeight(&bar_, r.width), r.needed) << r.what;
      for (tv::BarButton *b = bar_.first; b; b = b->next)
        b->rect = {0, 0, b->rect.bottom, b->rect.right};
      EXPECT_EQ(tv::CalculateWidth(&bar_, r.width), r.needed + 1) << r.what;
    }
    TearDown();
  }
  Add({{20, 10, 0}});
  At(0)->rect = {5, 5, 25, 15};
  EXPECT_EQ(tv::HitTest(&bar_, 5, 5), At(0));
  EXPECT_EQ(tv::HitTest(&bar_, 25, 5), nullptr) << "the right edge is outside";
}

TEST_F(Bar, DropsReorderAndHandOnFlags) {
  struct Row {
    const char *what;
    int from, onto;  // onto -1: an empty place
    std::vector<int32_t> order;
  } rows[] = {
      {"second onto fourth goes after it", 1, 3, {0, 2, 3, 1, 4}},
      {"fourth onto second goes before it", 3, 1, {0, 3, 1, 2, 4}},
      {"onto an empty place: to the end", 0, -1, {1, 2, 3, 4, 0}},
      {"onto itself: nothing", 2, 2, {0, 1, 2, 3, 4}},
  };
  for (const Row &r : rows) {
    SetUp();
    Add({{20, 10, 0}, {20, 10, 0}, {20, 10, 0}, {20, 10, 0}, {20, 10, 0}});
    for (int i = 0; i < 5; ++i) At(i)->id = i;
    tv::ArrangeButtons(&bar_, 500, 100);
    At(1)->flags = 6;
    tv::BarButton *b = At(r.from), *next = b->next;
    uint32_t nextFlagsBefore = next ? next->flags : 0;
    bool moved = tv::DropButton(&bar_, b, r.onto < 0 ? 400 : At(r.onto)->rect.left + 3, 5);
    EXPECT_EQ(Ids(), r.order) << r.what;
    EXPECT_EQ(moved, r.from != r.onto) << r.what;
    if (moved && r.from == 1) {
      EXPECT_EQ(b->flags & 6u, 0u) << r.what;
      EXPECT_EQ(next->flags, nextFlagsBefore | 6u) << r.what;
    }
    TearDown();
  }
}

}  // namespace
