#pragma once

#include <utility>

#include <unistd.h>

/// A descriptor that is closed with its owner.
class Descriptor final {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() { close(); }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return number_; }
    /// The caller closes it from now on.
    [[nodiscard]] int release() { return std::exchange(number_, -1); }
    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    void close() {
        if (number_ >= 0)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_ = -1;
};

/// A pipe whose ends are out of the way of the three standard streams, and closed by an exec.
struct Pipe final {
    Descriptor readEnd;
    Descriptor writeEnd;

    /// With a reason in errno where there is none.
    [[nodiscard]] static Pipe open();
    [[nodiscard]] bool isOpen() const { return readEnd.isOpen() && writeEnd.isOpen(); }
};
