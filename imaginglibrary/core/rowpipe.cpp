// Moving all rows of a picture from its reader to where they are wanted, with a thread at each end.
#include "imaginglibrary/core/rowpipe.h"

#include "imaginglibrary/core/rowpump.h"
#include "imaginglibrary/core/threadbudget.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace imaginglibrary {

namespace {

using Use = std::function<Status(std::uint32_t y, std::uint8_t* row)>;

// Fewer bytes are moved sooner than a thread is started.
constexpr std::uint64_t LeastBytes = 1 << 20;

// What is handed over at once, and how much of that may be under way.
constexpr std::size_t StripBytes = 1 << 17;
constexpr std::size_t Strips = 4;

// Strips go round: filled at one end, used at the other.
class RowPipe {
  public:
    RowPipe(std::size_t rowBytes, std::uint32_t count, const Use& use)
        : rowBytes_(rowBytes), count_(count),
          rowsOfAStrip_(static_cast<std::uint32_t>(std::clamp<std::size_t>(StripBytes / rowBytes, 1, count))),
          use_(use) {
        for (std::vector<std::uint8_t>& strip : strips_) {
            strip.resize(rowBytes_ * rowsOfAStrip_);
        }
    }

    ~RowPipe() { End(); }
    RowPipe(const RowPipe&) = delete;
    RowPipe& operator=(const RowPipe&) = delete;

    // False where there is no thread to be had.
    bool Start() {
        try {
            user_ = std::thread([this] { UseStrips(); });
        } catch (const std::system_error&) {
            return false;
        }
        return true;
    }

    Status Run(RowReader& rows) {
        const Status status = FillStrips(rows);
        End();
        if (failure_ != nullptr) {
            std::rethrow_exception(failure_);
        }
        return useStatus_ != Status::Ok ? useStatus_ : status;
    }

  private:
    void End() {
        {
            const std::lock_guard lock(mutex_);
            isEnding_ = true;
        }
        changed_.notify_all();
        if (user_.joinable()) {
            user_.join();
        }
    }

    std::uint32_t RowsOf(std::uint32_t strip) const { return std::min(rowsOfAStrip_, count_ - strip * rowsOfAStrip_); }
    std::uint32_t StripCount() const { return (count_ - 1) / rowsOfAStrip_ + 1; }
    bool HasFailed() const { return useStatus_ != Status::Ok || failure_ != nullptr; }

    Status FillStrips(RowReader& rows) {
        for (std::uint32_t strip = 0; strip < StripCount(); ++strip) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] { return strip - used_ < Strips || HasFailed(); });
            if (HasFailed()) {
                return Status::Ok; // the other end knows why
            }
            lock.unlock();
            std::uint8_t* row = strips_[strip % Strips].data();
            for (std::uint32_t i = 0; i < RowsOf(strip); ++i, row += rowBytes_) {
                if (const Status status = rows.ReadRow(row); status != Status::Ok) {
                    return status;
                }
            }
            lock.lock();
            filled_ = strip + 1;
            lock.unlock();
            changed_.notify_all();
        }
        return Status::Ok;
    }

    void UseStrips() {
        for (std::uint32_t strip = 0; strip < StripCount(); ++strip) {
            std::unique_lock lock(mutex_);
            changed_.wait(lock, [&] { return filled_ > strip || isEnding_; });
            if (filled_ <= strip) {
                return;
            }
            lock.unlock();
            Status status = Status::Ok;
            std::exception_ptr failure;
            try {
                status = UseStrip(strip);
            } catch (...) {
                failure = std::current_exception();
            }
            lock.lock();
            useStatus_ = status;
            failure_ = failure;
            used_ = strip + 1;
            const bool hasFailed = HasFailed();
            lock.unlock();
            changed_.notify_all();
            if (hasFailed) {
                return;
            }
        }
    }

    Status UseStrip(std::uint32_t strip) {
        std::uint8_t* row = strips_[strip % Strips].data();
        for (std::uint32_t i = 0; i < RowsOf(strip); ++i, row += rowBytes_) {
            if (const Status status = use_(strip * rowsOfAStrip_ + i, row); status != Status::Ok) {
                return status;
            }
        }
        return Status::Ok;
    }

    std::size_t rowBytes_;
    std::uint32_t count_;
    std::uint32_t rowsOfAStrip_;
    const Use& use_;
    std::array<std::vector<std::uint8_t>, Strips> strips_;

    std::mutex mutex_;
    std::condition_variable changed_;
    std::uint32_t filled_ = 0; // strips, from the top
    std::uint32_t used_ = 0;
    bool isEnding_ = false; // nothing more is filled
    Status useStatus_ = Status::Ok;
    std::exception_ptr failure_;
    std::thread user_;
};

} // namespace

Status PipeRows(Result<std::unique_ptr<RowReader>> rows, std::size_t rowBytes, std::uint32_t count, const Use& use) {
    ThreadShare threads;
    if (!rows.Ok() || std::uint64_t{rowBytes} * count < LeastBytes || !threads.TakeAnother()) {
        return ForEachRow(std::move(rows), rowBytes, count, use);
    }
    RowPipe pipe(rowBytes, count, use);
    return pipe.Start() ? pipe.Run(**rows) : ForEachRow(std::move(rows), rowBytes, count, use);
}

} // namespace imaginglibrary
