// Inputs the fuzzers found, kept as cases: a layers file read, written back
// and read again gives the same file.
#include "CorvelCore/Layers/LayerCodec.h"

#include <gtest/gtest.h>

#include <string>

namespace corvel {
namespace {

constexpr std::string_view kTrigger = R"("trigger":{"parts":[{"modifier":"fn"}]})";

std::string fileOf(std::string_view members) {
  return R"({"version":1,"layers":[{"id":"0f8fad5b-d9cb-469f-a165-70867728950e",)" +
         std::string(kTrigger) + "," + std::string(members) + "}]}";
}

TEST(LayerCodecRegressionTests, aFileReadWrittenAndReadAgainIsTheSameFile) {
  const struct {
    std::string members;
    std::string name;
  } cases[] = {
      // A name that is not a text is written over by the layer's own name,
      // so it is not kept either.
      {R"("name":{"keyA":{"action":{"type":"typeText","text":"Hi"}}})", "Layer"},
      {R"("name":["Work"],"kind":"robot")", "Layer"},
      {R"("name":"Work","needsReview":true,"leftOutKeys":2,"removedCharacters":1)", "Work"},
      // An app without a name goes by its bundle identifier, kept to a
      // name's length even when the identifier is longer.
      {R"("name":"Apps","keys":{"keyM":{"action":{"type":"openApp","bundleID":"com.apple.)" +
           std::string(200, 'Y') + R"("}}})",
       "Apps"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.members);
    const auto file = LayerCodec::decodeFile(fileOf(test.members));
    ASSERT_TRUE(file.has_value());
    ASSERT_EQ(file->layers.size(), 1u);
    EXPECT_EQ(file->layers[0].name, test.name);
    EXPECT_FALSE(file->layers[0].extras.contains("name"));
    const auto again = LayerCodec::decodeFile(LayerCodec::encode(*file));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(*again, *file);
  }
}

// The counts of what a reading removed are written only for a layer that
// needs review; without review, the second reading finds nothing to count.
TEST(LayerCodecRegressionTests, countsOfOneReadingAreWrittenOnlyForReview) {
  const auto file = LayerCodec::decodeFile(
      fileOf(R"("name":"Wo\u0007rk","leftOutKeys":1,"removedCharacters":3)"));
  ASSERT_TRUE(file.has_value());
  ASSERT_EQ(file->layers.size(), 1u);
  EXPECT_EQ(file->layers[0].removedCharacters, 4);
  EXPECT_EQ(file->layers[0].leftOutKeys, 1);
  const auto again = LayerCodec::decodeFile(LayerCodec::encode(*file));
  ASSERT_TRUE(again.has_value());
  ASSERT_EQ(again->layers.size(), 1u);
  EXPECT_EQ(again->layers[0].name, "Work");
  EXPECT_EQ(again->layers[0].removedCharacters, 0);
  EXPECT_EQ(again->layers[0].leftOutKeys, 0);
}

}  // namespace
}  // namespace corvel
