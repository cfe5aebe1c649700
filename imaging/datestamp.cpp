// The date that a file holds about its picture, read and written. Nothing is drawn.
#include "imaging/datestamp.h"

#include "imaging/adjusting.h"
#include "imaging/blank.h"
#include "imaging/course.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/paths.h"
#include "imaging/properties.h"
#include "platform/files.h"

#include <algorithm>

namespace lumbrix {

namespace {

constexpr std::uint32_t DateTimeTag = 306;

constexpr const char* StampedEnding = "_stamped.jpg";

FlatStatus ReadDateOf(ImageHandle image, std::string& date) {
    const PropertyValue value(image, DateTimeTag);
    if (value.Status() == Done) {
        date = PropertyText(value.Item());
    }
    return value.Status();
}

} // namespace

Outcome ReadDate(const std::string& name, std::string& date, const Wishes& wishes) {
    Course course(wishes);
    if (IsBlank(name)) {
        course.Fail(Step::Names, BadName);
        return course.Result();
    }
    OwnedImage image;
    if (course.BeginChecked() && course.LoadChecked(name, image)) {
        course.Take(Step::Property, ReadDateOf(image.Get(), date));
    }
    return course.Result();
}

std::string GetImageDateTime(const std::string& name) {
    std::string date;
    ReadDate(name, date, AsEstablished);
    return date;
}

std::string StampedName(const std::string& name) {
    return AddBackslash(FolderPart(name)) + BaseNamePart(name) + StampedEnding;
}

std::string StampedNameBeside(const std::string& name) {
    const std::size_t start = name.find_last_of(PathSeparators) + 1; // 0 for a bare name
    return name.substr(0, std::min(name.find('.', start), name.size())) + StampedEnding;
}

Outcome StampDate(const DateStampOrder& order, const Wishes& wishes) {
    Course course(wishes);
    if (IsBlank(order.source) || IsBlank(order.destination)) {
        course.Fail(Step::Names, BadName);
        return course.Result();
    }
    OwnedImage clone; // goes behind its source
    OwnedImage image;
    if (!course.BeginChecked(order.destination) || !course.LoadChecked(order.source, image) ||
        !Adjust(course, image.Get())) {
        return course.Result();
    }
    if (!course.Take(Step::Property, GdipCloneImage(image.Get(), clone.Place()))) {
        return course.Result();
    }
    CopyImageProperties(image.Get(), clone.Get());
    StripAsWanted(course, clone.Get()); // the date is set behind that
    const PropertyItem item{DateTimeTag, static_cast<std::uint32_t>(order.date.size() + 1), PropertyTypeAscii,
                            order.date.c_str()};
    if (const FlatStatus status = GdipSetPropertyItem(clone.Get(), &item); status != Done) {
        course.Fail(Step::Property, status);
        return course.Result();
    }
    if (!course.IsEstablished() && course.Measure(image.Get())) {
        course.Result().result = course.Result().source;
        course.Watch(clone.Get(), static_cast<std::uint32_t>(course.Result().source.height));
    }
    course.Save(clone.Get(), order.destination, "image/jpeg");
    course.LookForDamage(clone.Get());
    return course.Result();
}

StatusValue DateStampImage(const std::string& name, const std::string& date) {
    if (ImagingLibraryHandle == nullptr) {
        return Done;
    }
    const Failure end = StampDate({name, StampedName(name), date}, AsEstablished).end;
    switch (end.step) {
    case Step::None:
    case Step::Names:
        return Done;
    case Step::Property:
        return end.status;
    default:
        return Refused;
    }
}

} // namespace lumbrix
