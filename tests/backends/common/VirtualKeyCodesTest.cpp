#include "backends/common/VirtualKeyCodes.h"

#include "scene/Event.h"

#include <gtest/gtest.h>
#include <linux/input-event-codes.h>
#include <set>

namespace orbel::common {
namespace {

TEST(VirtualKeyCodesTest, TheKeysOfShortcutsAreWhereTheyAreOnTheKeyboard) {
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(0), KEY_A);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(6), KEY_Z);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(16), KEY_Y);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(22), KEY_6);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(23), KEY_5);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(36), KEY_ENTER);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(49), KEY_SPACE);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(50), KEY_GRAVE);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(53), KEY_ESC);
  EXPECT_EQ(common::VirtualKeyCodes::evdevCode(126), KEY_UP);
}

TEST(VirtualKeyCodesTest, FunctionKeysAreInTheirOrder) {
  const std::uint64_t codes[] = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                 103, 111, 105, 107, 113, 106, 64, 79,  80,  90};
  const std::uint16_t keys[] = {KEY_F1,  KEY_F2,  KEY_F3,  KEY_F4,  KEY_F5,  KEY_F6,  KEY_F7,
                                KEY_F8,  KEY_F9,  KEY_F10, KEY_F11, KEY_F12, KEY_F13, KEY_F14,
                                KEY_F15, KEY_F16, KEY_F17, KEY_F18, KEY_F19, KEY_F20};
  for (std::size_t index = 0; index < std::size(codes); ++index)
    EXPECT_EQ(common::VirtualKeyCodes::evdevCode(codes[index]), keys[index]) << codes[index];
}

TEST(VirtualKeyCodesTest, TheKeypadIsInItsOrder) {
  const std::uint64_t codes[] = {82, 83, 84, 85, 86, 87, 88, 89, 91, 92};
  const std::uint16_t keys[] = {KEY_KP0, KEY_KP1, KEY_KP2, KEY_KP3, KEY_KP4,
                                KEY_KP5, KEY_KP6, KEY_KP7, KEY_KP8, KEY_KP9};
  for (std::size_t index = 0; index < std::size(codes); ++index)
    EXPECT_EQ(common::VirtualKeyCodes::evdevCode(codes[index]), keys[index]) << codes[index];
}

TEST(VirtualKeyCodesTest, EveryKeyGoesThereAndBackAndNoTwoAreTheSame) {
  std::set<std::uint16_t> seen;
  for (std::uint64_t code = 0; code < 256; ++code) {
    const auto key = common::VirtualKeyCodes::evdevCode(code);
    if (!key) continue;
    EXPECT_EQ(common::VirtualKeyCodes::virtualKeyCode(*key), code);
    EXPECT_TRUE(seen.insert(*key).second) << code;
    EXPECT_LE(*key, 247) << "no X key code for " << code;
  }
  EXPECT_GE(seen.size(), 110U);
}

TEST(VirtualKeyCodesTest, CodesWithoutAKeyGiveNone) {
  EXPECT_FALSE(common::VirtualKeyCodes::evdevCode(52));
  EXPECT_FALSE(common::VirtualKeyCodes::evdevCode(127));
  EXPECT_FALSE(common::VirtualKeyCodes::evdevCode(kNoKeyCode));
  EXPECT_FALSE(common::VirtualKeyCodes::evdevCode((std::uint64_t{1} << 16) + 49));
  EXPECT_FALSE(common::VirtualKeyCodes::virtualKeyCode(KEY_SYSRQ));
}

} // namespace
} // namespace orbel::common
