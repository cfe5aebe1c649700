// Pieces of work that follow each other, done on two threads and taken back in their order.
#include "imaginglibrary/operations/orderedwork.h"

#include <algorithm>
#include <system_error>

namespace imaginglibrary {

OrderedWork::~OrderedWork() {
    {
        const std::lock_guard lock(mutex_);
        isEnding_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) {
        thread_.join();
    }
}

void OrderedWork::Add(std::unique_ptr<PieceOfWork> piece) {
    std::unique_lock lock(mutex_);
    entries_.push_back({std::move(piece)});
    if (entries_.size() > 1 && !thread_.joinable() && threads_.TakeAnother()) {
        try {
            thread_ = std::thread([this] { Serve(); });
        } catch (const std::system_error&) {
            // It is all done by TakeFirst, then.
        }
    }
    lock.unlock();
    changed_.notify_all();
}

std::size_t OrderedWork::Count() const {
    const std::lock_guard lock(mutex_);
    return entries_.size();
}

bool OrderedWork::IsFirstDone() const {
    const std::lock_guard lock(mutex_);
    return !entries_.empty() && entries_.front().state == State::Done;
}

std::unique_ptr<PieceOfWork> OrderedWork::TakeFirst() {
    std::unique_lock lock(mutex_);
    while (entries_.front().state != State::Done) {
        if (Entry* const waiting = FirstWaiting()) {
            DoHere(*waiting, lock);
        } else {
            changed_.wait(lock);
        }
    }
    std::unique_ptr<PieceOfWork> piece = std::move(entries_.front().piece);
    entries_.pop_front();
    return piece;
}

OrderedWork::Entry* OrderedWork::FirstWaiting() {
    const auto waiting = std::find_if(entries_.begin(), entries_.end(),
                                      [](const Entry& entry) { return entry.state == State::Waiting; });
    return waiting == entries_.end() ? nullptr : &*waiting;
}

void OrderedWork::DoHere(Entry& entry, std::unique_lock<std::mutex>& lock) {
    entry.state = State::UnderWay;
    lock.unlock();
    entry.piece->Do();
    lock.lock();
    entry.state = State::Done;
    changed_.notify_all();
}

void OrderedWork::Serve() {
    std::unique_lock lock(mutex_);
    while (!isEnding_) {
        if (Entry* const waiting = FirstWaiting()) {
            DoHere(*waiting, lock);
        } else {
            changed_.wait(lock);
        }
    }
}

} // namespace imaginglibrary
