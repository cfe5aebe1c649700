// Makes a thumbnail of a picture from bytes to bytes: thumbnail <photo.jpg >small.png
//
// c++ -std=c++17 thumbnail.cpp -llumbrix -o thumbnail
#include <lumbrix.h>

#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// The imaging library, loaded as long as this lives. There may be several.
class Lumbrix {
  public:
    Lumbrix() { LoadImagingLibrary(); }
    ~Lumbrix() { UnloadImagingLibrary(); }
    Lumbrix(const Lumbrix&) = delete;
    Lumbrix& operator=(const Lumbrix&) = delete;

    // A thumbnail of that height, in a format such as "png". Throws what the library says.
    std::vector<unsigned char> Thumbnail(const std::string& picture, int height, const char* format) const {
        lumbrix_input input = LUMBRIX_INPUT_INIT;
        input.data = picture.data();
        input.length = picture.size();
        lumbrix_output output = LUMBRIX_OUTPUT_INIT;
        lumbrix_job job = LUMBRIX_JOB_INIT;
        job.input = &input;
        job.output = &output;
        job.format = format;
        if (lumbrix_thumb(nullptr, nullptr, height, &job) != LUMBRIX_OK) {
            throw std::runtime_error(job.message);
        }
        const std::unique_ptr<void, Free> owned(output.data);
        const auto* bytes = static_cast<const unsigned char*>(output.data);
        return {bytes, bytes + output.length};
    }

  private:
    struct Free {
        void operator()(void* memory) const { lumbrix_free(memory); }
    };
};

int main() {
    const std::string picture{std::istreambuf_iterator<char>(std::cin), {}};
    try {
        const Lumbrix lumbrix;
        const auto small = lumbrix.Thumbnail(picture, 120, "png");
        std::cout.write(reinterpret_cast<const char*>(small.data()), static_cast<std::streamsize>(small.size()));
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
