// Eight threads at once: every operation on shared sources, and drawing one picture that all of them share. Meant for
// the build with ThreadSanitizer above all.
#include "tests/faults/operations.h"
#include "tests/support/flatdrawing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using namespace tests;

constexpr int Threads = 8;

template <class Work> void RunOnAllThreads(const Work& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&work, i] { work(i); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

class OperationsOnThreads : public testing::Test {
  protected:
    OperationsOnThreads() { LoadImagingLibrary(); }
    ~OperationsOnThreads() override { UnloadImagingLibrary(); }
};

// All write to the same targets as well, each of which is one whole file after the other.
TEST_F(OperationsOnThreads, MakeTheSamePicturesAsOneThread) {
    const TemporaryFolder folder;
    const std::vector<Operation> operations = MakeOperations(folder);
    std::vector<std::string> expected;
    for (const Operation& operation : operations) {
        ASSERT_EQ(operation.run(nullptr), LUMBRIX_OK) << operation.name;
        expected.push_back(operation.target.empty() ? "" : ReadBytes(operation.target));
    }
    RunOnAllThreads([&](int first) {
        const TemporaryFolder own;
        const std::vector<Operation> ownOperations = MakeOperations(own);
        for (std::size_t i = 0; i < ownOperations.size(); ++i) {
            const std::size_t number = (i + static_cast<std::size_t>(first) * 5) % ownOperations.size();
            const Operation& operation = ownOperations[number];
            lumbrix_job job = LUMBRIX_JOB_INIT;
            EXPECT_EQ(operation.run(&job), LUMBRIX_OK) << operation.name << ": " << job.message;
            if (!operation.target.empty()) {
                EXPECT_TRUE(ReadBytes(operation.target) == expected[number]) << operation.name;
            }
        }
    });
}

TEST_F(OperationsOnThreads, ReadTheSameSourcesAndReplaceTheSameTarget) {
    const TemporaryFolder folder;
    const std::vector<Operation> operations = MakeOperations(folder);
    const std::string source = (folder / "source.png").string();
    const std::string target = (folder / "shared.jpg").string();
    ASSERT_EQ(lumbrix_convert(source.c_str(), target.c_str(), nullptr), LUMBRIX_OK);
    const std::string whole = ReadBytes(target);
    RunOnAllThreads([&](int) {
        for (int round = 0; round < 10; ++round) {
            lumbrix_job job = LUMBRIX_JOB_INIT;
            EXPECT_EQ(lumbrix_convert(source.c_str(), target.c_str(), &job), LUMBRIX_OK) << job.message;
            EXPECT_TRUE(ReadBytes(target) == whole);
        }
    });
}

class DrawingOnThreads : public flat::FlatTest {};

TEST_F(DrawingOnThreads, MayShareThePictureThatIsDrawn) {
    flat::GpImage* const shared = ImageOf(*MakePicture(imaginglibrary::PixelFormat::Argb32, 200, 150));
    std::atomic<int> drawn{0};
    RunOnAllThreads([&](int) {
        for (int round = 0; round < 5; ++round) {
            flat::GpImage* surface = nullptr;
            flat::GpGraphics* graphics = nullptr;
            ASSERT_EQ(flat::CreateBitmap(300, 300, imaginglibrary::PixelFormat::Argb32, &surface), flat::Status::Ok);
            ASSERT_EQ(flat::GraphicsOf(surface, &graphics), flat::Status::Ok);
            flat::Status status = flat::DrawImagePoints(graphics, shared, {{0, 0}, {300, 20}, {-20, 300}});
            if (status == flat::Status::Ok) {
                status = flat::DrawImageRect(graphics, shared, 10, 10, 50, 40);
            }
            drawn += status == flat::Status::Ok || status == flat::Status::ObjectBusy ? 1 : 0;
            CallFlat("GdipDeleteGraphics", graphics);
            flat::GdipDisposeImage(surface);
        }
    });
    EXPECT_EQ(drawn, Threads * 5);
}

// Clones share their pixels until one of them is painted on. Each thread clones, asks and paints beside the others,
// also on the one that all are clones of.
TEST_F(DrawingOnThreads, MayPaintOnClonesOfOneBitmap) {
    flat::GpImage* const shared = NewBitmap(8, 6);
    const auto paintedLike = [&](flat::GpImage* image, flat::GpImage* color) {
        flat::GpGraphics* const graphics = NewGraphics(image);
        flat::Status status = flat::Status::ObjectBusy;
        while (status == flat::Status::ObjectBusy) {
            status = flat::DrawImage(graphics, color, 0, 0);
        }
        CallFlat("GdipDeleteGraphics", graphics);
        return status == flat::Status::Ok;
    };
    std::vector<std::vector<flat::Color>> pixels;
    std::vector<flat::GpImage*> colors;
    for (flat::Color i = 0; i < Threads; ++i) {
        const flat::Color color = 0xFF001122 + i * 0x100000;
        pixels.emplace_back(8 * 6, color);
        colors.push_back(ImageOf(*MakePictureOf(8, 6, [=](std::uint32_t, std::uint32_t) { return color; })));
    }
    ASSERT_TRUE(paintedLike(shared, colors[0]));
    RunOnAllThreads([&](int number) {
        const auto i = static_cast<std::size_t>(number);
        for (int round = 0; round < 20; ++round) {
            flat::GpImage* clone = nullptr;
            ASSERT_EQ(flat::GdipCloneImage(shared, &clone), flat::Status::Ok);
            const std::vector<flat::Color> before = PixelsOf(clone);
            EXPECT_EQ(std::count(pixels.begin(), pixels.end(), before), 1) << "of one thread's painting alone";
            EXPECT_TRUE(paintedLike(shared, colors[i]));
            EXPECT_EQ(PixelsOf(clone), before);
            EXPECT_TRUE(paintedLike(clone, colors[i]));
            EXPECT_EQ(PixelsOf(clone), pixels[i]);
            flat::GdipDisposeImage(clone);
        }
    });
}

} // namespace
