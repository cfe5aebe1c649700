// Runs a list of conversions through the exported procedures: lines of FORMAT, source and target between tabs come in,
// one status a line goes out.
#include "imaging/exports/lumbrix.h"

#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <string>

int main() {
    using Convert = std::function<int(const char*, const char*)>;
    const std::map<std::string, Convert> conversions{
        {"bmp", ConvertImageToBmp},   {"jpg", ConvertImageToJpeg}, {"gif", ConvertImageToGif},
        {"tiff", ConvertImageToTiff}, {"png", ConvertImageToPng},
    };
    LoadImagingLibrary();
    std::string line;
    while (std::getline(std::cin, line)) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        std::istringstream fields(line);
        std::string format, source, target;
        std::getline(fields, format, '\t');
        std::getline(fields, source, '\t');
        std::getline(fields, target, '\t');
        const auto convert = conversions.find(format);
        std::cout << (convert == conversions.end() ? -1 : convert->second(source.c_str(), target.c_str())) << std::endl;
    }
    UnloadImagingLibrary();
    return 0;
}
