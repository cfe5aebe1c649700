// JPEG files of every kind, made for tests by libjpeg itself.
#include "tests/support/jpegfiles.h"

#include <cstdlib>
#include <stdexcept>
#include <vector>

namespace tests {

namespace {

int Channels(J_COLOR_SPACE space) { return space == JCS_GRAYSCALE ? 1 : space == JCS_CMYK ? 4 : 3; }

void Configure(jpeg_compress_struct& info, const JpegFile& file, std::vector<jpeg_scan_info>& scans) {
    info.image_width = file.width;
    info.image_height = file.height;
    info.input_components = Channels(file.given);
    info.in_color_space = file.given;
    jpeg_set_defaults(&info);
    jpeg_set_colorspace(&info, file.stored);
    jpeg_set_quality(&info, file.quality, TRUE);
    info.comp_info[0].h_samp_factor = file.horizontalSampling;
    info.comp_info[0].v_samp_factor = file.verticalSampling;
    for (int i = 1; i < info.num_components; ++i) {
        info.comp_info[i].h_samp_factor = 1;
        info.comp_info[i].v_samp_factor = 1;
    }
    info.optimize_coding = file.hasBestCodes ? TRUE : FALSE;
    info.arith_code = file.isArithmetic ? TRUE : FALSE;
    info.write_Adobe_marker = file.hasAdobeMarker ? TRUE : FALSE;
    info.restart_interval = file.restartInterval;
    info.density_unit = static_cast<UINT8>(file.densityUnit);
    info.X_density = static_cast<UINT16>(file.horizontalDensity);
    info.Y_density = static_cast<UINT16>(file.verticalDensity);
    if (file.scans == JpegScans::Progressive) {
        jpeg_simple_progression(&info);
    } else if (file.scans == JpegScans::OnePerComponent) {
        for (int i = 0; i < info.num_components; ++i) {
            scans.push_back({.comps_in_scan = 1, .component_index = {i, 0, 0, 0}, .Ss = 0, .Se = 63, .Ah = 0, .Al = 0});
        }
        info.scan_info = scans.data();
        info.num_scans = info.num_components;
    }
}

} // namespace

std::uint8_t SmoothSample(unsigned x, unsigned y, int channel) {
    // Up and down again, so that large pictures have no edges either.
    const auto wave = [](unsigned at, unsigned height) {
        return at / height % 2 == 0 ? at % height : height - at % height;
    };
    switch (channel) {
    case 0:
        return static_cast<std::uint8_t>(40 + wave(x * 5, 180));
    case 1:
        return static_cast<std::uint8_t>(200 - wave(y * 6, 160));
    case 2:
        return static_cast<std::uint8_t>(60 + wave((x + y) * 2, 150));
    default:
        return static_cast<std::uint8_t>(230 - wave(x + 2 * y, 100));
    }
}

std::string MakeJpeg(const JpegFile& file, const JpegSamples& samples) {
    jpeg_compress_struct info{};
    jpeg_error_mgr errors{};
    info.err = jpeg_std_error(&errors);
    errors.error_exit = [](j_common_ptr) { std::abort(); };
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    std::vector<jpeg_scan_info> scans;
    Configure(info, file, scans);
    jpeg_start_compress(&info, TRUE);
    const int channels = Channels(file.given);
    std::vector<JSAMPLE> row(static_cast<std::size_t>(channels) * file.width);
    for (unsigned y = 0; y < file.height; ++y) {
        for (unsigned x = 0; x < file.width; ++x) {
            for (int i = 0; i < channels; ++i) {
                row[static_cast<std::size_t>(channels) * x + static_cast<std::size_t>(i)] = samples(x, y, i);
            }
        }
        JSAMPROW rows[] = {row.data()};
        jpeg_write_scanlines(&info, rows, 1);
    }
    jpeg_finish_compress(&info);
    std::string made(reinterpret_cast<const char*>(bytes), size);
    jpeg_destroy_compress(&info);
    std::free(bytes);
    return made;
}

std::size_t FindMarker(const std::string& jpeg, std::uint8_t marker, std::size_t from) {
    return jpeg.find(std::string{'\xFF', static_cast<char>(marker)}, from);
}

std::string WithClaimedSize(std::string jpeg, unsigned width, unsigned height) {
    for (const std::uint8_t frame : {0xC0, 0xC1, 0xC2, 0xC9, 0xCA}) {
        if (const std::size_t at = FindMarker(jpeg, frame); at != std::string::npos) {
            jpeg[at + 5] = static_cast<char>(height >> 8);
            jpeg[at + 6] = static_cast<char>(height);
            jpeg[at + 7] = static_cast<char>(width >> 8);
            jpeg[at + 8] = static_cast<char>(width);
            return jpeg;
        }
    }
    throw std::logic_error("no frame header");
}

} // namespace tests
