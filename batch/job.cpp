// The smallest unit of work: one source file made into one target file.
#include "batch/job.h"

#include "base/lettercase.h"
#include "base/numbers.h"
#include "batch/options.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/cleanup.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

struct ImageJob {
    std::int32_t targetHeight;
    std::string sourcePath;
    std::string targetPath;
    bool makeSmaller;
};

struct Conversion {
    const char* extension;
    int32_t(LUMBRIX_CALL* convert)(const char* source, const char* destination);
};

constexpr Conversion Conversions[] = {
    {"bmp", ConvertImageToBmp},  {"tiff", ConvertImageToTiff}, {"gif", ConvertImageToGif},
    {"jpg", ConvertImageToJpeg}, {"png", ConvertImageToPng},
};

ImageJob ReadJob(const Order& order) {
    ImageJob job;
    job.targetHeight = NumericValue(order.HeightText());
    job.sourcePath = order.SourceFile().substr(0, LongestPath);
    job.targetPath = order.Target().substr(0, LongestPath);
    job.makeSmaller = order.IsSmallerChecked();
    return job;
}

void MakeSmaller(const ImageJob& job) {
    if (FileExists(job.targetPath)) {
        DeleteOrListFile(job.targetPath);
    }
    ResizeImage(job.sourcePath.c_str(), job.targetPath.c_str(), job.targetHeight);
}

} // namespace

void RunConversionJob(const Order& order, Messages& messages) {
    const ImageJob job = ReadJob(order);
    if (job.makeSmaller && job.targetHeight > 0) {
        MakeSmaller(job);
        return;
    }
    const std::string extension = LowerCase(ExtensionPart(job.targetPath));
    for (const Conversion& known : Conversions) {
        if (extension == known.extension) {
            known.convert(job.sourcePath.c_str(), job.targetPath.c_str());
            return;
        }
    }
    messages.Show("The selected type of output is not supported", SorryTitle);
}

} // namespace lumbrix
