// The settings of a user in the text file "lumbrix/settings" of the folder for configuration.
#include "base/lettercase.h"
#include "platform/errors.h"
#include "platform/files.h"
#include "platform/settingsfile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <sys/file.h>
#include <unistd.h>

namespace lumbrix {

namespace {

std::string Environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

// The folder of the file, with a separator; empty where the user has none. Only full paths count.
std::string SettingsFolder() {
    std::string configuration = Environment("XDG_CONFIG_HOME");
    if (!configuration.starts_with(PathSeparator)) {
        const std::string home = Environment("HOME");
        configuration = home.empty() ? "" : home + "/.config";
    }
    return configuration.empty() ? "" : configuration + "/lumbrix/";
}

std::string SettingsPath() { return SettingsFolder() + "settings"; }

// What cannot be read, or not wholly, counts as empty.
Settings ReadSettings() { return Settings::FromText(ReadSmallFile(SettingsPath())).value_or(Settings()); }

// The same before a change. Raises where the file is there but cannot be read at this moment, for the change would make
// an empty one of it.
Settings ReadSettingsToChange() {
    const std::string text = FileExists(SettingsPath()) ? ReadFileContent(SettingsPath()) : "";
    return Settings::FromText(text).value_or(Settings());
}

// Keeps other processes from changing the settings meanwhile. Where that cannot be had it is gone without.
class Lock {
  public:
    explicit Lock(const std::string& folder) : file_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        while (file_ >= 0 && flock(file_, LOCK_EX) != 0 && errno == EINTR) {
        }
    }
    ~Lock() {
        if (file_ >= 0) {
            close(file_);
        }
    }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

  private:
    int file_;
};

// Lets `change` work on the settings, and writes them where it gives back success. Its status, or that of writing.
template <class Change> std::int32_t ChangeSettings(Change change) {
    std::int32_t status = SettingsDone;
    const auto error = trap([&] {
        if (SettingsFolder().empty()) {
            throw RuntimeError(ENOENT, "no folder for settings");
        }
        MakeFolders(SettingsFolder());
        const Lock lock(SettingsFolder());
        Settings settings = ReadSettingsToChange();
        status = change(settings);
        if (status == SettingsDone) {
            ReplaceWholeFile(SettingsPath(), settings.Text(), Readers::OwnerOnly);
        }
    });
    return error ? SettingsCannotWrite : status;
}

class SettingsFile : public SettingsStore {
  public:
    std::int32_t OpenKey(SettingsRoot root, const char* path, std::uint32_t /*access*/, Key& key) override {
        if (!IsNamedRoot(root)) {
            return BadSettingsHandle;
        }
        if (!ReadSettings().Has(root, path)) {
            return SettingNotFound;
        }
        key = Keep({root, path});
        return SettingsDone;
    }

    std::int32_t CreateKey(SettingsRoot root, const char* path, std::uint32_t access, Key& key) override {
        if (!IsNamedRoot(root)) {
            return BadSettingsHandle;
        }
        if (!ReadSettings().Has(root, path)) {
            const std::int32_t status = ChangeSettings([&](Settings& settings) {
                settings.Add(root, path);
                return SettingsDone;
            });
            if (status != SettingsDone) {
                return status;
            }
        }
        return OpenKey(root, path, access, key);
    }

    std::int32_t QueryValue(Key key, const char* name, std::uint32_t& type, char* bytes,
                            std::uint32_t& length) override {
        const std::optional<Place> place = PlaceOf(key);
        if (!place) {
            return BadSettingsHandle;
        }
        Settings settings = ReadSettings();
        SettingsKey* const found = settings.Find(place->root, place->path);
        const Setting* const value = found == nullptr ? nullptr : found->Find(name);
        if (value == nullptr) {
            return SettingNotFound;
        }
        const std::uint32_t room = length;
        length = static_cast<std::uint32_t>(value->bytes.size());
        if (length > room) {
            return MoreSettingData;
        }
        type = value->type;
        std::memcpy(bytes, value->bytes.data(), length);
        return SettingsDone;
    }

    std::int32_t SetValue(Key key, const char* name, std::uint32_t type, const char* bytes,
                          std::uint32_t length) override {
        return Change(key, [&](SettingsKey& found) {
            Setting* const value = found.Find(name);
            Setting& written = value == nullptr ? found.values.emplace_back(Setting{name, type, {}}) : *value;
            written.type = type;
            written.bytes.assign(bytes, length);
            return SettingsDone;
        });
    }

    std::int32_t DeleteValue(Key key, const char* name) override {
        return Change(key, [&](SettingsKey& found) {
            const auto isMeant = [&](const Setting& value) { return UpperCase(value.name) == UpperCase(name); };
            return std::erase_if(found.values, isMeant) == 0 ? SettingNotFound : SettingsDone;
        });
    }

    std::int32_t DeleteKey(SettingsRoot root, const char* path) override {
        if (!IsNamedRoot(root)) {
            return BadSettingsHandle;
        }
        return ChangeSettings([&](Settings& settings) {
            if (!settings.Has(root, path)) {
                return SettingNotFound;
            }
            if (std::strspn(path, "\\") == std::strlen(path) || settings.HasKeysBelow(root, path)) {
                return SettingsAccessDenied;
            }
            settings.Remove(root, path);
            return SettingsDone;
        });
    }

    std::int32_t CloseKey(Key key) override {
        const std::lock_guard guard(mutex_);
        return open_.erase(key) == 0 ? BadSettingsHandle : SettingsDone;
    }

  private:
    struct Place {
        SettingsRoot root;
        std::string path;
    };

    Key Keep(Place place) {
        const std::lock_guard guard(mutex_);
        open_.emplace(++last_, std::move(place));
        return last_;
    }

    std::optional<Place> PlaceOf(Key key) {
        const std::lock_guard guard(mutex_);
        const auto found = open_.find(key);
        return found == open_.end() ? std::nullopt : std::optional(found->second);
    }

    // Lets `change` work on an open key that may have been deleted since.
    template <class KeyChange> std::int32_t Change(Key key, KeyChange change) {
        const std::optional<Place> place = PlaceOf(key);
        if (!place) {
            return BadSettingsHandle;
        }
        return ChangeSettings([&](Settings& settings) {
            return settings.Has(place->root, place->path) ? change(settings.Add(place->root, place->path))
                                                          : SettingsKeyDeleted;
        });
    }

    std::mutex mutex_;
    std::map<Key, Place> open_;
    Key last_ = 0;
};

} // namespace

SettingsStore& SystemSettings() {
    static SettingsFile file;
    return file;
}

} // namespace lumbrix
