// An operation under way: its session, what came in between, and how far it is.
#include "imaging/course.h"

#include "imaging/formats.h"
#include "imaging/gdiplus/bindings.h"
#include "imaging/gdiplus/extensions.h"
#include "imaging/memorystream.h"
#include "platform/filefacts.h"

#include <algorithm>

namespace lumbrix {

StatusValue Course::OrMemory(FlatStatus library, StatusValue own) const {
    return library == OutOfMemory && !IsEstablished() ? OutOfMemory : own;
}

bool Course::Begin(const std::string& destination) {
    if (!IsEstablished() && ImagingLibraryHandle == nullptr) {
        return Fail(Step::Session, NoLibrary);
    }
    if (wishes_.keepsExisting && !wishes_.output && KindOfFile(destination, wishes_.names) == FileKind::Regular) {
        return Fail(Step::Existing, AlreadyThere);
    }
    session_.emplace();
    return Take(Step::Session, OrMemory(session_->LibraryStatus(), session_->Status()));
}

bool Course::BeginChecked(const std::string& destination) {
    Begin(destination);
    return EndUnlessAllWentWell();
}

bool Course::Take(Step step, StatusValue status) {
    if (status == Done) {
        return true;
    }
    if (!IsEstablished()) {
        return Fail(step, status);
    }
    if (outcome_.first.step == Step::None) {
        outcome_.first = {step, status};
    }
    return true;
}

bool Course::Fail(Step step, StatusValue status) {
    if (outcome_.first.step == Step::None) {
        outcome_.first = {step, status};
    }
    outcome_.end = {step, status};
    return false;
}

bool Course::Load(const std::string& name, OwnedImage& image, Step step) {
    const FlatStatus status = LoadSource(name, image, step);
    if (status != Done || !image) {
        image.LeaveBehind();
        return Fail(step, status != Done ? status : NotLoaded);
    }
    if (wishes_.refusesDamage) {
        RefuseImageDamage(image.Get());
    }
    return true;
}

// The stamp is a file in any case.
FlatStatus Course::LoadSource(const std::string& name, OwnedImage& image, Step step) const {
    return step == Step::Load && wishes_.input ? LoadImageStream(ReadingStream(*wishes_.input).get(), image.Place())
                                               : LoadImageFile(name, image.Place(), wishes_.names);
}

bool Course::LoadChecked(const std::string& name, OwnedImage& image) {
    const bool isLoaded = Load(name, image);
    if (!isLoaded && outcome_.end.status != NotLoaded) {
        LeaveSessionOpen();
    }
    return isLoaded;
}

bool Course::Measure(ImageHandle image, MeasuredFirst first) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    if (first == MeasuredFirst::Width) {
        GdipGetImageWidth(image, &width);
    }
    GdipGetImageHeight(image, &height);
    if (first == MeasuredFirst::Height) {
        GdipGetImageWidth(image, &width);
    }
    outcome_.source = {static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
    const bool hasSize = outcome_.source.width > 0 && outcome_.source.height > 0;
    return hasSize || Fail(Step::Measure, InvalidParameter);
}

bool Course::FindEncoder(const std::string& mimeWord, Clsid& encoder) {
    std::string text;
    const FlatStatus status = lumbrix::FindEncoder(mimeWord, text);
    encoder = ClsidFromText(text);
    return Take(Step::Encoder, text.empty() ? OrMemory(status, NoEncoder) : Done);
}

bool Course::FindEncoderChecked(const std::string& mimeWord, Clsid& encoder) {
    FindEncoder(mimeWord, encoder);
    return EndUnlessAllWentWell();
}

void Course::FitMetadataTo(ImageHandle image) const {
    if (!IsEstablished()) {
        FitMetadata(image);
    }
}

StatusValue Course::Save(ImageHandle image, const std::string& destination, const std::string& mimeWord) {
    Clsid encoder;
    return FindEncoder(mimeWord, encoder) ? Save(image, destination, encoder) : NoEncoder;
}

StatusValue Course::Save(ImageHandle image, const std::string& destination, const Clsid& encoder) {
    const StatusValue status = wishes_.output
                                   ? SaveToOutput(image, encoder)
                                   : SaveImageFile(image, destination, encoder, wishes_.encoding, wishes_.names);
    outcome_.isCompressionChosen = wishes_.encoding.compression.has_value();
    outcome_.isWritten = status == Done && ImagingLibraryHandle != nullptr;
    Take(Step::Save, status);
    return status;
}

// Nobody gets bytes of a picture that is not whole.
StatusValue Course::SaveToOutput(ImageHandle image, const Clsid& encoder) const {
    const auto bytes = std::make_shared<GrowingMemory>();
    const StatusValue status = SaveImageStream(image, WritingStream(bytes).get(), encoder, wishes_.encoding);
    if (status != Done || ImagingLibraryHandle == nullptr) {
        return status;
    }
    return wishes_.output(*bytes) ? Done : Win32Error;
}

void Course::Watch(ImageHandle image, std::uint32_t rows, std::uint32_t rowsBefore) {
    if (wishes_.progress) {
        stretch_ = {rows, rowsBefore};
        WatchImage(image, ReportRows, this);
    }
}

// A reading that begins anew, as that of a picture whose colours are counted first, is not reported until it comes
// beyond what was.
std::int32_t LUMBRIX_FLAT_CALL Course::ReportRows(void* course, std::uint32_t rowsDone, std::uint32_t /*rows*/) {
    auto& self = *static_cast<Course*>(course);
    self.reported_ = std::max(self.reported_, std::min(self.stretch_.rowsBefore + rowsDone, self.stretch_.rows));
    return self.wishes_.progress(self.reported_, self.stretch_.rows) ? 1 : 0;
}

void Course::LookForDamage(ImageHandle source) {
    outcome_.isDamaged = outcome_.isDamaged || (!IsEstablished() && IsImageDamaged(source));
}

void Course::LookForDamageOfStamp(ImageHandle stamp) {
    outcome_.isStampDamaged = !IsEstablished() && IsImageDamaged(stamp);
}

bool Course::EndUnlessAllWentWell() {
    const Failure failure = outcome_.first;
    if (failure.status == Done) {
        return true;
    }
    LeaveSessionOpen();
    return Fail(failure.step, failure.status);
}

void Course::LeaveSessionOpen() {
    if (IsEstablished() && session_) {
        session_->LeaveOpen();
    }
}

} // namespace lumbrix
