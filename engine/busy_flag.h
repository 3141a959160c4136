#pragma once

namespace quorvane {

// Holds a flag up as long as it lives, however the routine ends.
class BusyFlag {
  public:
    explicit BusyFlag(bool& flag)
        : flag_(flag)
        , before_(flag) {
        flag_ = true;
    }
    ~BusyFlag() { flag_ = before_; }
    BusyFlag(const BusyFlag&) = delete;
    BusyFlag& operator=(const BusyFlag&) = delete;

  private:
    bool& flag_;
    bool before_;
};

} // namespace quorvane
