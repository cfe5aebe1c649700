// Pieces of work that follow each other, done on two threads and taken back in their order.
#pragma once

#include "imaginglibrary/core/threadbudget.h"

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace imaginglibrary {

class PieceOfWork {
  public:
    virtual ~PieceOfWork() = default;

    // On any thread, once. Whatever goes wrong is kept until the piece is taken back.
    virtual void Do() noexcept = 0;
};

// Belongs to one thread. Another one, which there is from the second piece on where there is a processor to spare
// (threadbudget.h), works beside it and ends with this.
class OrderedWork {
  public:
    OrderedWork() = default;
    ~OrderedWork();
    OrderedWork(const OrderedWork&) = delete;
    OrderedWork& operator=(const OrderedWork&) = delete;

    void Add(std::unique_ptr<PieceOfWork> piece);

    // How many pieces have been added and not taken back.
    std::size_t Count() const;

    // Whether the oldest piece is done.
    bool IsFirstDone() const;

    // The oldest piece, done. There must be one. Where nobody does it yet it is done here, and while another thread
    // does it, younger ones are.
    std::unique_ptr<PieceOfWork> TakeFirst();

  private:
    enum class State {
        Waiting,
        UnderWay,
        Done,
    };
    struct Entry {
        std::unique_ptr<PieceOfWork> piece;
        State state = State::Waiting;
    };

    Entry* FirstWaiting();
    void DoHere(Entry& entry, std::unique_lock<std::mutex>& lock);
    void Serve();

    ThreadShare threads_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Entry> entries_; // an entry stays where it is while others come and go at the ends
    bool isEnding_ = false;
    std::thread thread_;
};

} // namespace imaginglibrary
