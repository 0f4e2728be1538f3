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

// A name or scope of the wrong type is kept from the first reading, but
// writing puts the layer's own in its place: the second reading is the
// first with those kept values set aside.
TEST(LayerCodecRegressionTest, AFileReadWrittenAndReadAgainIsTheSameFile) {
  const struct {
    std::string members;
    std::string name;
  } cases[] = {
      {R"("name":{"keyA":{"action":{"type":"typeText","text":"Hi"}}})", "Layer"},
      {R"("name":["Work"],"kind":"robot","appScope":false)", "Layer"},
      {R"("name":"Work","needsReview":true,"leftOutKeys":2,"removedCharacters":1)", "Work"},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.members);
    const auto file = LayerCodec::decodeFile(fileOf(test.members));
    ASSERT_TRUE(file.has_value());
    ASSERT_EQ(file->layers.size(), 1u);
    EXPECT_EQ(file->layers[0].name, test.name);
    const auto again = LayerCodec::decodeFile(LayerCodec::encode(*file));
    ASSERT_TRUE(again.has_value());
    LayerFile keptAside = *file;
    keptAside.layers[0].extras.erase("name");
    keptAside.layers[0].extras.erase("appScope");
    EXPECT_EQ(*again, keptAside);
  }
}

}  // namespace
}  // namespace corvel
