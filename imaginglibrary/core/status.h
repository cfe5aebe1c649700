// The result of every operation of the imaging library: a platform status number, or a value.
#pragma once

#include <cassert>
#include <optional>
#include <utility>

namespace imaginglibrary {

// The numbers are part of the flat interface: callers see them unchanged.
enum class Status : int {
    Ok = 0,
    GenericError = 1,
    InvalidParameter = 2,
    OutOfMemory = 3,
    ObjectBusy = 4,
    InsufficientBuffer = 5,
    NotImplemented = 6,
    Win32Error = 7,
    WrongState = 8,
    Aborted = 9,
    FileNotFound = 10,
    ValueOverflow = 11,
    AccessDenied = 12,
    UnknownImageFormat = 13,
    FontFamilyNotFound = 14,
    FontStyleNotFound = 15,
    NotTrueTypeFont = 16,
    UnsupportedGdiplusVersion = 17,
    GdiplusNotInitialized = 18,
    PropertyNotFound = 19,
    PropertyNotSupported = 20,
    ProfileNotFound = 21,
};

// The platform answers a file whose content it cannot read with "out of memory"; so do we.
inline constexpr Status UndecodableContent = Status::OutOfMemory;

// Either a value, or the status that says why there is none. A Result is never both and never Ok without a value.
template <class T> class [[nodiscard]] Result {
  public:
    Result(T value) : value_(std::move(value)) {}
    Result(Status status) : status_(status) { assert(status != Status::Ok); }

    bool Ok() const { return value_.has_value(); }
    Status GetStatus() const { return value_ ? Status::Ok : status_; }

    T& operator*() { return *value_; }
    const T& operator*() const { return *value_; }
    T* operator->() { return &*value_; }
    const T* operator->() const { return &*value_; }

  private:
    std::optional<T> value_;
    Status status_ = Status::Ok;
};

} // namespace imaginglibrary
