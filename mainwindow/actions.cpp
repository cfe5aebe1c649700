// The two actions of the main window that open the annotate and crop window.
#include "mainwindow/actions.h"

#include "annotate/rules.h"
#include "annotate/state.h"
#include "batch/croprect.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

constexpr std::size_t LongestPath = 259;

// A new temporary name, its file made and empty. Where that cannot be, what comes of it fails later on its own.
std::string NewStageFile() {
    std::string name;
    trap([&] {
        name = NewTempImageName();
        EnsureFileExists(name);
    });
    return name;
}

void AddStage(const std::string& source) {
    ImageStage stage;
    stage.source = source.substr(0, LongestPath);
    stage.previewSource = NewStageFile();
    stage.result = NewStageFile();
    stage.previewResult = NewStageFile();
    ImageStages.push_back(stage);
}

// Whether the user asked to go on; if an annotation was placed, on top of it.
bool GoesOn() {
    if (!KeepRequested) {
        return false;
    }
    if (const std::string result = ImageStages.back().result; ShortcutSize(result) > 0) {
        AddStage(result);
    }
    return true;
}

void DeleteStageFiles() {
    for (const ImageStage& stage : ImageStages) {
        for (const std::string& file : {stage.previewSource, stage.result, stage.previewResult}) {
            DeleteOrListFile(file);
        }
    }
}

} // namespace

void RunAnnotateAction(ActionDesk& desk) {
    const std::string source = desk.SourceFile();
    if (source.empty()) {
        return;
    }
    std::int32_t width = 0;
    std::int32_t height = 0;
    desk.RefreshSizeLabel(&width, &height);
    if (width <= 0 || height <= 0) {
        return;
    }
    const std::string target = desk.Target();
    ImageStages.clear();
    AddStage(source);
    do {
        desk.ShowAnnotateWindow(ImageStages.size() - 1, width, height, AnnotateTitle);
    } while (GoesOn());
    trap([&] { DuplicateFile(ImageStages.back().result, target); });
    DeleteStageFiles();
}

void RunCropAction(ActionDesk& desk) {
    const std::string source = desk.SourceFile();
    const std::string target = desk.Target();
    if (source.empty()) {
        return desk.ShowCropDimensions();
    }
    ImageStage stage;
    stage.source = source.substr(0, LongestPath);
    stage.previewSource = NewStageFile();
    stage.previewResult = NewStageFile();
    stage.result = target.substr(0, LongestPath);
    ImageStages.assign(1, stage);
    std::int32_t width = 0;
    std::int32_t height = 0;
    desk.RefreshSizeLabel(&width, &height);
    if (width <= 0 || height <= 0) {
        return;
    }
    CropRect = {};
    desk.ShowAnnotateWindow(0, width, height, CropTitle);
    if (!HasArea(CropRect)) {
        return;
    }
    CropImage(source.c_str(), target.c_str(), CropRect.left, CropRect.top, CropRect.right - CropRect.left,
              CropRect.bottom - CropRect.top);
    GetImageDimensions(desk.Target().c_str(), &width, &height);
    ImageStages[0].source = ImageStages[0].result;
    ImageStages[0].previewSource = NewStageFile();
    desk.ShowAnnotateWindow(0, width, height, CroppedTitle);
}

} // namespace lumbrix
