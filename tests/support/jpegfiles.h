// JPEG files of every kind, made for tests by libjpeg itself.
#pragma once

#include <cstdio>
#include <jpeglib.h>

#include <cstdint>
#include <functional>
#include <string>

namespace tests {

enum class JpegScans { One, OnePerComponent, Progressive };

struct JpegFile {
    unsigned width = 33;
    unsigned height = 17;
    J_COLOR_SPACE given = JCS_RGB;    // how the samples are given
    J_COLOR_SPACE stored = JCS_YCbCr; // how the file stores them
    JpegScans scans = JpegScans::One;
    bool isArithmetic = false;
    bool hasBestCodes = false; // those that libjpeg finds for it
    bool hasAdobeMarker = false;
    unsigned restartInterval = 0; // in blocks of the scan
    int horizontalSampling = 1;   // of the first component; all others have 1
    int verticalSampling = 1;
    int quality = 95;
    int densityUnit = 0; // JFIF's: 1 is per inch, 2 per centimetre
    unsigned horizontalDensity = 1;
    unsigned verticalDensity = 1;
};

// One sample of a pixel: red, green, blue or cyan, magenta, yellow, black as stored.
using JpegSamples = std::function<std::uint8_t(unsigned x, unsigned y, int channel)>;

// Gentle slopes, which survive compression well, unlike in each channel.
std::uint8_t SmoothSample(unsigned x, unsigned y, int channel);

std::string MakeJpeg(const JpegFile& file, const JpegSamples& samples = SmoothSample);

// Where the first marker of this kind stands in a file, behind `from`; npos if nowhere.
std::size_t FindMarker(const std::string& jpeg, std::uint8_t marker, std::size_t from = 0);

// The same file with other sides in its frame header.
std::string WithClaimedSize(std::string jpeg, unsigned width, unsigned height);

} // namespace tests
