// A main window that is not there: its texts and checks, and what was said to its user.
#pragma once

#include "batch/order.h"

#include <string>
#include <vector>

namespace tests {

class FakeDesk : public lumbrix::OrderDesk {
  public:
    std::string SourceFile() const override { return sourceFile; }
    std::string SourceFolder() const override { return sourceFolder; }
    std::string Target() const override { return target; }
    std::string HeightText() const override { return heightText; }
    bool IsSmallerChecked() const override { return isSmallerChecked; }
    bool IsCropChecked() const override { return isCropChecked; }
    std::string SelectedOutputWord() const override { return outputWord; }

    void Show(const std::string& text, const std::string& title) override { said.push_back(title + ": " + text); }

    bool Confirm(const std::string& text, const std::string& title) override {
        said.push_back(title + "? " + text);
        return answersYes;
    }

    std::string sourceFile;
    std::string sourceFolder;
    std::string target;
    std::string heightText = "512";
    bool isSmallerChecked = false;
    bool isCropChecked = false;
    std::string outputWord = "bmp";
    bool answersYes = true;

    std::vector<std::string> said;
};

} // namespace tests
