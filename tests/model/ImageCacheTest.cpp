#include "model/ImageCache.h"

#include "foundation/SharedObjects.h"

#include <gtest/gtest.h>

#include <string>

namespace orbel {
namespace {

class ImageCacheTest : public testing::Test {
protected:
  static ImagePointer newImage() { return Image::withBitmap({320, 320}, Bitmap(1, 1)); }
  void storeNumbered(int from, int to) {
    for (int number = from; number <= to; ++number)
      cache.storeImage(newImage(), std::to_string(number));
  }
  ImageCache cache;
};

TEST_F(ImageCacheTest, StartsEmptyAndFindsNothing) {
  EXPECT_TRUE(cache.keys().empty());
  EXPECT_TRUE(cache.values().empty());
  EXPECT_EQ(cache.imageForKey("unknown"), nullptr);
}

TEST_F(ImageCacheTest, FindsAnImageUnderAnEqualKey) {
  const auto image = newImage();
  cache.storeImage(image, "key");
  EXPECT_EQ(cache.imageForKey(std::string("ke") + "y"), image);
  EXPECT_EQ(cache.imageForKey("Key"), nullptr);
}

TEST_F(ImageCacheTest, ALookupOfAnUnknownKeyChangesNothing) {
  storeNumbered(1, 3);
  const auto keys = cache.keys();
  const auto values = cache.values();
  EXPECT_EQ(cache.imageForKey("4"), nullptr);
  EXPECT_EQ(cache.keys(), keys);
  EXPECT_EQ(cache.values(), values);
}

TEST_F(ImageCacheTest, Keeps35EntriesAndForgetsTheFirstWithThe36th) {
  storeNumbered(1, 35);
  EXPECT_TRUE(cache.imageForKey("1"));
  storeNumbered(36, 36);
  EXPECT_EQ(cache.keys().size(), 35u);
  EXPECT_EQ(cache.values().size(), 35u);
  EXPECT_EQ(cache.imageForKey("1"), nullptr);
  for (int number = 2; number <= 36; ++number)
    EXPECT_TRUE(cache.imageForKey(std::to_string(number))) << number;
}

TEST_F(ImageCacheTest, ALookupDoesNotMakeAnEntryYounger) {
  storeNumbered(1, 35);
  EXPECT_TRUE(cache.imageForKey("1"));
  storeNumbered(36, 36);
  EXPECT_EQ(cache.imageForKey("1"), nullptr);
}

TEST_F(ImageCacheTest, ASecondStoreUnderAKeyLeavesTheFirstInFront) {
  const auto first = newImage();
  const auto second = newImage();
  cache.storeImage(first, "key");
  cache.storeImage(second, "key");
  EXPECT_EQ(cache.keys().size(), 2u);
  EXPECT_EQ(cache.imageForKey("key"), first);
}

TEST_F(ImageCacheTest, RemovingAKeyThatIsThereTwiceLeavesTheSecond) {
  const auto second = newImage();
  cache.storeImage(newImage(), "key");
  cache.storeImage(second, "key");
  cache.removeImageForKey("key");
  EXPECT_EQ(cache.imageForKey("key"), second);
  cache.removeImageForKey("key");
  EXPECT_EQ(cache.imageForKey("key"), nullptr);
}

TEST_F(ImageCacheTest, EvictionOfTheOlderOfTwoEntriesLeavesTheYounger) {
  const auto second = newImage();
  cache.storeImage(newImage(), "key");
  cache.storeImage(second, "key");
  storeNumbered(1, 34);
  EXPECT_EQ(cache.imageForKey("key"), second);
}

TEST_F(ImageCacheTest, RemovingAnUnknownKeyDoesNothing) {
  storeNumbered(1, 3);
  cache.removeImageForKey("4");
  EXPECT_EQ(cache.keys().size(), 3u);
  EXPECT_EQ(cache.values().size(), 3u);
}

TEST_F(ImageCacheTest, RemovingFromTheMiddleKeepsTheOthersTogether) {
  storeNumbered(1, 3);
  const auto third = cache.imageForKey("3");
  cache.removeImageForKey("2");
  EXPECT_EQ(cache.keys(), (std::vector<std::string>{"1", "3"}));
  EXPECT_EQ(cache.imageForKey("3"), third);
}

TEST_F(ImageCacheTest, RepairsListsOfDifferentLengthsByForgettingEverything) {
  storeNumbered(1, 3);
  cache.setKeys({"a", "b"});
  const auto image = newImage();
  cache.storeImage(image, "new");
  EXPECT_EQ(cache.keys(), std::vector<std::string>{"new"});
  EXPECT_EQ(cache.values(), std::vector<ImagePointer>{image});
}

TEST_F(ImageCacheTest, LooksUpAndRemovesSafelyWhileTheListsDiffer) {
  cache.setKeys({"a", "b"});
  EXPECT_EQ(cache.imageForKey("b"), nullptr);
  cache.removeImageForKey("b");
  EXPECT_EQ(cache.keys().size(), 2u);
}

TEST_F(ImageCacheTest, ReducesACacheThatIsTooLong) {
  cache.setKeys(std::vector<std::string>(50, "old"));
  cache.setValues(std::vector<ImagePointer>(50, newImage()));
  cache.storeImage(newImage(), "new");
  EXPECT_EQ(cache.keys().size(), 35u);
  EXPECT_TRUE(cache.imageForKey("new"));
}

TEST_F(ImageCacheTest, TheSharedCacheIsAlwaysTheSame) {
  SharedObjects shared;
  EXPECT_EQ(&ImageCache::sharedCache(), &ImageCache::sharedCache());
}

} // namespace
} // namespace orbel
