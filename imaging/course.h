// An operation under way: its session, what came in between, and how far it is.
#pragma once

#include "imaging/images.h"
#include "imaging/outcome.h"
#include "imaging/session.h"

#include <optional>
#include <string>

namespace lumbrix {

// Which side of an image is asked for first: the operations differ in that.
enum class MeasuredFirst { Width, Height };

// The legal order of calls is TakeFormat where something is written, Begin once, then any others; Result at last.
// Images that it works on must not outlive it.
class Course {
  public:
    explicit Course(const Wishes& wishes) : wishes_(wishes) {}
    Course(const Course&) = delete;
    Course& operator=(const Course&) = delete;

    bool IsEstablished() const { return wishes_.conduct == Conduct::Established; }
    const Wishes& Wanted() const { return wishes_; }

    // The MIME word of the format to write; none, for an extension that is unknown or a blank name, ends the operation.
    bool TakeFormat(const std::string& mimeWord) { return !mimeWord.empty() || Fail(Step::Names, BadName); }

    // Starts the session. False where a truthful operation ends for want of one, or because of its destination.
    bool Begin(const std::string& destination = {});

    // As Begin, for procedures that are known to look at the answer: a session that is refused ends the operation in
    // either conduct, and as established nothing is shut down.
    bool BeginChecked(const std::string& destination = {});

    // Notes what a step answered. False where the operation ends with it.
    bool Take(Step step, StatusValue status);

    // Ends the operation, whatever its conduct. Always false.
    bool Fail(Step step, StatusValue status);

    // False where there is no image, which ends the operation; an established one may go on without all the same.
    bool Load(const std::string& name, OwnedImage& image, Step step = Step::Load);

    // As Load, and as established a failure leaves the session open.
    bool LoadChecked(const std::string& name, OwnedImage& image);

    // The size of a source. False for an image without one.
    bool Measure(ImageHandle image, MeasuredFirst first = MeasuredFirst::Width);

    // The encoder for a MIME word; 16 zero bytes, which every save refuses, where there is none.
    bool FindEncoder(const std::string& mimeWord, Clsid& encoder);

    // As FindEncoder, and a word without one ends the operation in either conduct; as established the session then
    // stays open.
    bool FindEncoderChecked(const std::string& mimeWord, Clsid& encoder);

    // A truthful operation has the metadata of what it made tell of that, where the imaging library can; as established
    // they go along as they are.
    void FitMetadataTo(ImageHandle image) const;

    // Writes the image. Its properties are the caller's business. The status of the save, or that of the encoder.
    StatusValue Save(ImageHandle image, const std::string& destination, const std::string& mimeWord);
    StatusValue Save(ImageHandle image, const std::string& destination, const Clsid& encoder);

    // Reports the rows that are read of an image. An operation that reads two images, one after the other, says how
    // many rows it reads in all, and how many are done when the reading of this one begins.
    void Watch(ImageHandle image, std::uint32_t rows, std::uint32_t rowsBefore = 0);

    // Whether it was seen by now that the source, or the stamp, is damaged becomes part of the result.
    void LookForDamage(ImageHandle source);
    void LookForDamageOfStamp(ImageHandle stamp);

    // As established, the session stays open.
    void LeaveSessionOpen();

    Outcome& Result() { return outcome_; }

  private:
    struct Stretch {
        std::uint32_t rows;
        std::uint32_t rowsBefore;
    };

    // What the imaging library answered where it lacks memory and the truth is told, else our own word for a failure.
    StatusValue OrMemory(FlatStatus library, StatusValue own) const;

    FlatStatus LoadSource(const std::string& name, OwnedImage& image, Step step) const;
    StatusValue SaveToOutput(ImageHandle image, const Clsid& encoder) const;

    // Whether all statuses so far were Ok; else the operation ends in either conduct, and leaves its session open.
    bool EndUnlessAllWentWell();

    static std::int32_t LUMBRIX_FLAT_CALL ReportRows(void* course, std::uint32_t rowsDone, std::uint32_t rows);

    const Wishes& wishes_;
    Outcome outcome_;
    std::optional<ImagingSession> session_;
    Stretch stretch_{};
    std::uint32_t reported_ = 0;
};

} // namespace lumbrix
