// Every operation of the library on small pictures in a folder.
#include "tests/faults/operations.h"

#include "tests/support/bmpfiles.h"

#include <stdexcept>

namespace tests {

namespace {

constexpr const char* Formats[] = {"bmp", "jpg", "gif", "tif", "png"};

class Maker {
  public:
    explicit Maker(const TemporaryFolder& folder) : folder_(folder) {
        WriteBytes(folder / "source.bmp", MakeBmp(23, 17, [](int x, int y) {
                       return Rgb{static_cast<std::uint8_t>(11 * x), static_cast<std::uint8_t>(15 * y),
                                  static_cast<std::uint8_t>(7 * (x + y))};
                   }));
        for (const char* format : {"jpg", "gif", "tif", "png"}) {
            Expect(lumbrix_convert(Path("source.bmp").c_str(), Source(format).c_str(), nullptr));
        }
        Expect(lumbrix_date_stamp(Source("jpg").c_str(), Path("dated.jpg").c_str(), "2024:01:02 03:04:05", nullptr));
    }

    std::vector<Operation> Make() {
        for (const char* from : Formats) {
            for (const char* to : Formats) {
                Add(std::string(from) + " to " + to, to, [source = Source(from)](const char* target, lumbrix_job* job) {
                    return lumbrix_convert(source.c_str(), target, job);
                });
            }
        }
        AddChanges();
        AddDrawings();
        AddReadings();
        for (Operation& operation : operations_) {
            const bool readsTiff =
                operation.name.starts_with("tif ") || operation.name == "crop" || operation.name == "read size";
            if (readsTiff) {
                operation.frailLibraries = {"/libtiff."};
            }
            if (operation.name == "annotate") {
                operation.stride = 7;
                operation.frailLibraries = {"/libfontconfig.", "/libc."}; // the latter copies texts for the former
            }
        }
        return operations_;
    }

  private:
    static void Expect(int32_t status) {
        if (status != LUMBRIX_OK) {
            throw std::runtime_error(std::string("cannot make a picture: ") + lumbrix_status_name(status));
        }
    }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    std::string Source(const std::string& format) const { return Path("source." + format); }

    template <class Run> void Add(const std::string& name, const std::string& format, Run run) {
        const std::string target = Path("target." + format);
        operations_.push_back({name, target, [run, target](lumbrix_job* job) { return run(target.c_str(), job); }});
    }

    void AddChanges() {
        Add("thumb", "jpg", [source = Source("png")](const char* target, lumbrix_job* job) {
            return lumbrix_thumb(source.c_str(), target, 8, job);
        });
        Add("resize", "png", [source = Source("jpg")](const char* target, lumbrix_job* job) {
            return lumbrix_resize(source.c_str(), target, 9, job);
        });
        Add("enlarge", "tif", [source = Source("gif")](const char* target, lumbrix_job* job) {
            return lumbrix_resize(source.c_str(), target, 40, job);
        });
        Add("crop", "bmp", [source = Source("tif")](const char* target, lumbrix_job* job) {
            const lumbrix_rectangle rectangle{3, 2, 11, 9};
            return lumbrix_crop(source.c_str(), target, &rectangle, job);
        });
        Add("rotate", "jpg", [source = Path("dated.jpg")](const char* target, lumbrix_job* job) {
            lumbrix_turn turn = LUMBRIX_TURN_INIT;
            turn.angle = 90;
            turn.flip = "H";
            return lumbrix_rotate(source.c_str(), target, &turn, job);
        });
        Add("adjusted", "gif", [source = Path("dated.jpg")](const char* target, lumbrix_job* job) {
            lumbrix_job own = LUMBRIX_JOB_INIT;
            lumbrix_job& changed = job != nullptr ? *job : own;
            changed.auto_orient = changed.strip = 1;
            changed.background = "FF8000";
            return lumbrix_convert(source.c_str(), target, &changed);
        });
    }

    void AddDrawings() {
        Add("annotate", "png", [source = Source("jpg")](const char* target, lumbrix_job* job) {
            lumbrix_annotation annotation = LUMBRIX_ANNOTATION_INIT;
            annotation.text = "Text";
            annotation.font = "Arial";
            annotation.font_size = 10;
            return lumbrix_annotate(source.c_str(), target, &annotation, job);
        });
        Add("stamp", "png", [source = Source("jpg"), stamp = Source("gif")](const char* target, lumbrix_job* job) {
            lumbrix_stamp_place place = LUMBRIX_STAMP_PLACE_INIT;
            place.stamp = stamp.c_str();
            return lumbrix_stamp(source.c_str(), target, &place, job);
        });
        Add("date stamp", "jpg", [source = Source("jpg")](const char* target, lumbrix_job* job) {
            return lumbrix_date_stamp(source.c_str(), target, "2025:06:07 08:09:10", job);
        });
        Add("icon", "ico", [source = Source("png")](const char* target, lumbrix_job* job) {
            const int32_t sizes[] = {16, 70};
            return lumbrix_icon(source.c_str(), target, sizes, 2, job);
        });
    }

    void AddReadings() {
        operations_.push_back({"read size", "", [source = Source("tif")](lumbrix_job* job) {
                                   return lumbrix_read_size(source.c_str(), job);
                               }});
        const auto addText = [&](const char* name, auto read) {
            operations_.push_back({name, "", [read, source = Path("dated.jpg")](lumbrix_job* job) {
                                       char* text = nullptr;
                                       const int32_t status = read(source.c_str(), &text, job);
                                       lumbrix_free(text);
                                       return status;
                                   }});
        };
        addText("read date", lumbrix_read_date);
        addText("read properties", lumbrix_read_properties);
    }

    const TemporaryFolder& folder_;
    std::vector<Operation> operations_;
};

} // namespace

std::vector<Operation> MakeOperations(const TemporaryFolder& folder) { return Maker(folder).Make(); }

} // namespace tests
