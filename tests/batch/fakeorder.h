// A main window that is not there: its texts and checks.
#pragma once

#include "batch/order.h"

#include <functional>
#include <string>

namespace tests {

class FakeOrder : public lumbrix::Order {
  public:
    std::string SourceFile() const override { return sourceFile; }
    std::string SourceFolder() const override { return sourceFolder; }
    std::string Target() const override {
        if (onTarget) {
            onTarget();
        }
        return target;
    }
    std::string HeightText() const override {
        TellOfRead();
        return heightText;
    }
    bool IsSmallerChecked() const override { return isSmallerChecked; }
    bool IsCropChecked() const override { return isCropChecked; }
    std::string SelectedOutputWord() const override {
        TellOfRead();
        return outputWord;
    }

    std::string sourceFile;
    std::string sourceFolder;
    std::string target;
    std::string heightText = "512";
    bool isSmallerChecked = false;
    bool isCropChecked = false;
    std::string outputWord = "bmp";

    std::function<void()> onTarget; // when the target is read
    std::function<void()> onRead;   // when the height or the output type is read

  private:
    void TellOfRead() const {
        if (onRead) {
            onRead();
        }
    }
};

} // namespace tests
