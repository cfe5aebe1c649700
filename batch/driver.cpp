// What the button "Convert" runs: one file, or all files of a folder.
#include "batch/driver.h"

#include "base/numbers.h"
#include "batch/croprect.h"
#include "batch/job.h"
#include "batch/options.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

// What one run reads of the desk, once.
struct Order {
    bool isCropChecked;
    std::int32_t targetHeight;
    std::string sourceFile;
    std::string target;
    std::string sourceFolder;
};

struct Counts {
    std::int32_t processed = 0;
    std::int32_t failed = 0;

    void Add(std::int32_t result) { ++(result == 0 ? processed : failed); }
};

Order ReadOrder(const OrderDesk& desk) {
    Order order;
    order.isCropChecked = desk.IsCropChecked();
    order.targetHeight = NumericValue(desk.HeightText());
    order.sourceFile = desk.SourceFile();
    order.target = desk.Target();
    order.sourceFolder = desk.SourceFolder();
    return order;
}

void RunSingleFile(OrderDesk& desk, const Order& order) {
    if (!FileExists(order.sourceFile)) {
        return;
    }
    if (FileExists(order.target) && !desk.Confirm(order.target + " file exists. Overwrite it?", VerifyTitle)) {
        return;
    }
    if (order.isCropChecked) {
        desk.Show("Cropping files is available only for batch operation", SorryTitle);
        return;
    }
    RunConversionJob(desk);
    desk.Show(FileExists(order.target) ? "Done" : "Faliure", ProgramTitle);
}

std::int32_t CropFile(const Order& order, const std::string& name, const std::string& word) {
    const std::string target = order.target + BaseNamePart(name) + "_cropped." + word;
    return CropImage((order.sourceFolder + name).c_str(), target.c_str(), CropRect.left, CropRect.top,
                     CropRect.right - CropRect.left, CropRect.bottom - CropRect.top);
}

std::int32_t ShrinkFile(const Order& order, const std::string& name, const std::string& word) {
    const std::string target = order.target + BaseNamePart(name) + "." + word;
    return ResizeImage((order.sourceFolder + name).c_str(), target.c_str(), order.targetHeight);
}

void RunFolder(OrderDesk& desk, const Order& order) {
    Counts counts;
    FileSearch search;
    for (std::string name = search.FirstMatch(order.sourceFolder + "*.*"); !name.empty();
         name = search.FirstMatch("")) {
        if (!IsConvertibleExtension(ExtensionPart(name))) {
            counts.Add(CropFile(order, name, desk.SelectedOutputWord()));
        } else if (!order.isCropChecked) {
            counts.Add(ShrinkFile(order, name, desk.SelectedOutputWord()));
        }
    }
    desk.Show(std::to_string(counts.processed) + " files were processed. \r\n" + std::to_string(counts.failed) +
                  " files could not be resized.",
              ProgramTitle);
}

void RunOrder(OrderDesk& desk) {
    const Order order = ReadOrder(desk);
    if (!order.sourceFile.empty() && !order.target.empty()) {
        RunSingleFile(desk, order);
    } else if (!order.sourceFolder.empty() && !order.target.empty() && FolderExists(order.sourceFolder) &&
               FolderExists(order.target)) {
        RunFolder(desk, order);
    }
}

} // namespace

void RunBatch(OrderDesk& desk) {
    if (const auto error = trap([&] { RunOrder(desk); })) {
        desk.Show("Error: " + std::to_string(error->Number()), ProgramTitle);
    }
}

} // namespace lumbrix
