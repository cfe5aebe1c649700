// What the button "Convert" runs: one file, or all files of a folder.
#include "batch/driver.h"

#include "base/numbers.h"
#include "batch/job.h"
#include "batch/options.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

// What one run reads of the order once; the word of the output type is read anew for every file.
struct Reading {
    bool isCropChecked;
    std::int32_t targetHeight;
    std::string sourceFile;
    std::string target;
    std::string sourceFolder;
};

// One run, and whom it talks to.
struct Run {
    const Order& order;
    Messages& messages;
    const PixelRectangle& cropRectangle;
    Reading reading;
};

struct Counts {
    std::int32_t processed = 0;
    std::int32_t failed = 0;

    void Add(std::int32_t result) { ++(result == 0 ? processed : failed); }
};

Reading ReadOnce(const Order& order) {
    Reading reading;
    reading.isCropChecked = order.IsCropChecked();
    reading.targetHeight = NumericValue(order.HeightText());
    reading.sourceFile = order.SourceFile();
    reading.target = order.Target();
    reading.sourceFolder = order.SourceFolder();
    return reading;
}

void RunSingleFile(const Run& run) {
    const Reading& reading = run.reading;
    if (!FileExists(reading.sourceFile)) {
        return;
    }
    if (FileExists(reading.target) &&
        !run.messages.Confirm(reading.target + " file exists. Overwrite it?", VerifyTitle)) {
        return;
    }
    if (reading.isCropChecked) {
        run.messages.Show("Cropping files is available only for batch operation", SorryTitle);
        return;
    }
    RunConversionJob(run.order, run.messages);
    run.messages.Show(FileExists(reading.target) ? "Done" : "Faliure", ProgramTitle);
}

std::int32_t CropFile(const Run& run, const std::string& name) {
    const std::string target = run.reading.target + BaseNamePart(name) + "_cropped." + run.order.SelectedOutputWord();
    const PixelRectangle& part = run.cropRectangle;
    return CropImage((run.reading.sourceFolder + name).c_str(), target.c_str(), part.left, part.top, part.Width(),
                     part.Height());
}

std::int32_t ShrinkFile(const Run& run, const std::string& name) {
    const std::string target = run.reading.target + BaseNamePart(name) + "." + run.order.SelectedOutputWord();
    return ResizeImage((run.reading.sourceFolder + name).c_str(), target.c_str(), run.reading.targetHeight);
}

void RunFolder(const Run& run) {
    const Reading& reading = run.reading;
    Counts counts;
    FileSearch search;
    for (std::string name = search.FirstMatch(reading.sourceFolder + "*.*"); !name.empty();
         name = search.FirstMatch("")) {
        if (!IsConvertibleExtension(ExtensionPart(name))) {
            counts.Add(CropFile(run, name));
        } else if (!reading.isCropChecked) {
            counts.Add(ShrinkFile(run, name));
        }
    }
    run.messages.Show(std::to_string(counts.processed) + " files were processed. \r\n" + std::to_string(counts.failed) +
                          " files could not be resized.",
                      ProgramTitle);
}

void RunOrder(const Run& run) {
    const Reading& reading = run.reading;
    if (!reading.sourceFile.empty() && !reading.target.empty()) {
        RunSingleFile(run);
    } else if (!reading.sourceFolder.empty() && !reading.target.empty() && FolderExists(reading.sourceFolder) &&
               FolderExists(reading.target)) {
        RunFolder(run);
    }
}

} // namespace

void RunBatch(const Order& order, Messages& messages, const PixelRectangle& cropRectangle) {
    const WaitCursor wait(messages);
    if (const auto error = trap([&] { RunOrder({order, messages, cropRectangle, ReadOnce(order)}); })) {
        messages.Show("Error: " + std::to_string(error->Number()), ProgramTitle);
    }
}

} // namespace lumbrix
