// Image resources and IPTC data, between the segments of JPEG files and the tags of TIFF.
#include "imaginglibrary/codecs/metadata/photoshop.h"
#include "imaginglibrary/core/limits.h"
#include "tests/support/codecs.h"
#include "tests/support/exifmaker.h"
#include "tests/support/jpegfiles.h"
#include "tests/support/properties.h"

namespace {

using namespace imaginglibrary;
using namespace tests;

using namespace std::string_literals;

const std::string Sign = "Photoshop 3.0\0"s;
const std::string Iptc = "\x1C\2\5\0\5title"s;
const Property IptcItem = BytesProperty(33723, PropertyType::Undefined, Iptc);

std::string Resource(const std::string& number, const std::string& data, const std::string& name = "\0\0"s) {
    return "8BIM" + number + name + tests::NumberBytes(true, data.size(), 4) + data +
           std::string(data.size() % 2, '\0');
}

std::string App13(const std::string& content) {
    return "\xFF\xED" + tests::NumberBytes(true, content.size() + 2, 2) + content;
}

PropertyList PropertiesBehind(const std::string& segments) {
    return PropertiesIn(JpegCodec(), MakeJpeg({}).insert(2, segments));
}

const std::string Caption = Resource("\4\4", Iptc);
const std::string Copyright = Resource("\4\x0A", "\1", "\3own"s);
const std::string ThumbnailResource = Resource("\4\x0C", "small");

Property ResourcesItem(const std::string& resources) { return BytesProperty(34377, PropertyType::Byte, resources); }

TEST(Photoshop, IptcAndTheOtherResourcesBecomeItemsOfTheirOwn) {
    const auto properties = PropertiesBehind(App13(Sign + Copyright + Caption + ThumbnailResource));
    EXPECT_EQ(TagsOf(properties), (std::vector<std::uint32_t>{0x5091, 0x5090, 33723, 34377}));
    ExpectItems(properties, {IptcItem, ResourcesItem(Copyright + ThumbnailResource)});
    EXPECT_EQ(PropertiesBehind(App13(Sign + Caption)).Find(34377), nullptr);
    EXPECT_EQ(PropertiesBehind(App13(Sign + Copyright)).Find(33723), nullptr);
}

TEST(Photoshop, SegmentsArePutTogether) {
    const std::string all = Copyright + Caption;
    for (std::size_t at = 0; at <= all.size(); ++at) {
        ExpectItems(
            PropertiesBehind(App13(Sign + all.substr(0, at)) + App13("Adobe_CM") + App13(Sign + all.substr(at))),
            {IptcItem, ResourcesItem(Copyright)});
    }
}

TEST(Photoshop, BrokenResourcesArePassedOver) {
    const std::string all = Copyright + Caption;
    for (std::size_t size = 0; size < all.size(); ++size) {
        const auto properties = PropertiesBehind(App13(Sign + all.substr(0, size)));
        EXPECT_EQ(properties.Find(33723) != nullptr, size >= all.size() - Iptc.size() % 2 && size > Copyright.size());
        EXPECT_EQ(properties.Find(34377) != nullptr, size >= Copyright.size() - 1) << size;
    }
    EXPECT_EQ(PropertiesBehind(App13(Sign + "8BIM\4\4\0\0\xFF\xFF\xFF\xFF"s + Iptc)).Find(33723), nullptr);
}

TEST(Photoshop, JpegAndTiffCarryBoth) {
    const std::vector<Property> items = {IptcItem, ResourcesItem(Copyright)};
    const std::string jpeg = WrittenWith(JpegCodec(), ListOf(items));
    EXPECT_NE(jpeg.find(App13(Sign + Caption + Copyright)), std::string::npos);
    ExpectItems(PropertiesIn(JpegCodec(), jpeg), items);
    for (const Codec* codec : {&TiffCodec(), &PngCodec()}) {
        ExpectItems(PropertiesIn(*codec, WrittenWith(*codec, PropertiesIn(JpegCodec(), jpeg))), items);
    }
}

TEST(Photoshop, IptcStandsOnceAmongTheResources) {
    const std::string old = Resource("\4\4", "old");
    const std::string both = WrittenWith(JpegCodec(), ListOf({IptcItem, ResourcesItem(old + Copyright)}));
    EXPECT_NE(both.find(App13(Sign + Caption + Copyright)), std::string::npos);
    const std::string alone = WrittenWith(JpegCodec(), ListOf({ResourcesItem(old + Copyright)}));
    EXPECT_NE(alone.find(App13(Sign + old + Copyright)), std::string::npos);
}

TEST(Photoshop, IptcInNumbersOfFourBytesIsReadInEitherOrder) {
    const std::string padded = Iptc + "\0\0"s;
    for (const bool isSwapped : {false, true}) {
        std::string bytes = padded;
        for (std::size_t at = 0; isSwapped && at < bytes.size(); at += 4) {
            std::reverse(&bytes[at], &bytes[at] + 4);
        }
        const auto iptc = IptcOf(ListOf({BytesProperty(33723, PropertyType::Long, bytes)}));
        EXPECT_EQ(std::string(iptc.begin(), iptc.end()), padded);
    }
    EXPECT_TRUE(IptcOf(ListOf({AsciiProperty(33723, "text")})).empty());
}

TEST(Photoshop, LargeResourcesTakeSeveralSegments) {
    const std::vector<Property> items = {IptcItem, ResourcesItem(Resource("\4\x0A", std::string(150000, 'x')))};
    ExpectItems(PropertiesIn(JpegCodec(), WrittenWith(JpegCodec(), ListOf(items))), items);
    const auto tooLarge = ListOf({ResourcesItem(Resource("\4\x0A", std::string(MaximumCarriedBytes, 'x')))});
    EXPECT_EQ(WrittenWith(JpegCodec(), tooLarge), WrittenWith(JpegCodec(), {}));
}

TEST(Photoshop, ThumbnailsAreTakenOut) {
    PropertyList properties = ListOf({ResourcesItem(Resource("\4\x09", "old") + Copyright + ThumbnailResource)});
    RemoveThumbnailResources(properties);
    EXPECT_EQ(properties.Items(), std::vector<Property>{ResourcesItem(Copyright)});
    properties = ListOf({IptcItem, ResourcesItem(ThumbnailResource)});
    RemoveThumbnailResources(properties);
    EXPECT_EQ(properties.Items(), std::vector<Property>{IptcItem});
    RemoveThumbnailResources(properties);
    EXPECT_EQ(properties.Items(), std::vector<Property>{IptcItem});
}

} // namespace
