// The two actions of the main window that open the annotate and crop window.
#include "annotate/actions.h"

#include "annotate/rules.h"
#include "imaging/exports/lumbrix.h"
#include "imaging/paths.h"
#include "platform/cleanup.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace lumbrix {

namespace {

// A new temporary name, its file made and empty. Where that cannot be, what comes of it fails later on its own.
std::string NewStageFile() {
    std::string name;
    trap([&] {
        name = NewTempImageName();
        EnsureFileExists(name);
    });
    return name;
}

void AddStage(AnnotateState& state, const std::string& source) {
    ImageStage stage;
    stage.source = source.substr(0, LongestPath);
    stage.previewSource = NewStageFile();
    stage.result = NewStageFile();
    stage.previewResult = NewStageFile();
    state.stages.push_back(stage);
}

// Whether the user asked to go on; if an annotation was placed, on top of it.
bool GoesOn(AnnotateState& state) {
    if (!state.isKeepRequested) {
        return false;
    }
    if (const std::string result = state.stages.back().result; ShortcutSize(result) > 0) {
        AddStage(state, result);
    }
    return true;
}

void DeleteStageFiles(const AnnotateState& state) {
    for (const ImageStage& stage : state.stages) {
        for (const std::string& file : {stage.previewSource, stage.result, stage.previewResult}) {
            DeleteOrListFile(file);
        }
    }
}

bool IsReadable(PixelSize size) { return size.width > 0 && size.height > 0; }

} // namespace

void RunAnnotateAction(const Order& order, ActionWindows& windows, AnnotateState& state) {
    const std::string source = order.SourceFile();
    if (source.empty()) {
        return;
    }
    const PixelSize size = windows.RefreshSizeLabel();
    if (!IsReadable(size)) {
        return;
    }
    const std::string target = order.Target();
    state.stages.clear();
    AddStage(state, source);
    do {
        windows.ShowAnnotateWindow(state.stages.size() - 1, size, AnnotateTitle);
    } while (GoesOn(state));
    trap([&] { DuplicateFile(state.stages.back().result, target); });
    DeleteStageFiles(state);
}

void RunCropAction(const Order& order, ActionWindows& windows, Messages& messages, AnnotateState& state) {
    const std::string source = order.SourceFile();
    const std::string target = order.Target();
    if (source.empty()) {
        return windows.ShowCropDimensions();
    }
    ImageStage stage;
    stage.source = source.substr(0, LongestPath);
    stage.previewSource = NewStageFile();
    stage.previewResult = NewStageFile();
    stage.result = target.substr(0, LongestPath);
    state.stages.assign(1, stage);
    PixelSize size = windows.RefreshSizeLabel();
    if (!IsReadable(size)) {
        return;
    }
    state.cropRectangle = {};
    windows.ShowAnnotateWindow(0, size, CropTitle);
    const PixelRectangle marked = state.cropRectangle;
    if (!HasArea(marked)) {
        return;
    }
    {
        const WaitCursor wait(messages);
        CropImage(source.c_str(), target.c_str(), marked.left, marked.top, marked.Width(), marked.Height());
        // Of a picture that cannot be read the old size stays.
        GetImageDimensions(order.Target().c_str(), &size.width, &size.height);
    }
    state.stages[0].source = state.stages[0].result;
    state.stages[0].previewSource = NewStageFile();
    windows.ShowAnnotateWindow(0, size, CroppedTitle);
}

} // namespace lumbrix
