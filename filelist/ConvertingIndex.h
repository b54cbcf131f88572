#pragma once

/// The row of the movie that is converted, or a number below 0 that says why there is none. It is
/// that number wherever it is read. A value.
class ConvertingIndex final {
public:
    static constexpr int noRow = -1;
    static constexpr int pauseRequested = -2; ///< the encoder is suspended at its next word
    static constexpr int stoppingPaused = -3;

    // Both without a word: it is that number.
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr ConvertingIndex(int number = noRow) : number_(number) {}
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr operator int() const { return number_; }
    [[nodiscard]] constexpr bool isRow() const { return number_ >= 0; }
    [[nodiscard]] constexpr bool isNone() const { return number_ == noRow; }
    [[nodiscard]] constexpr bool isPauseRequested() const { return number_ == pauseRequested; }

    void clear() { number_ = noRow; }
    void requestPause() { number_ = pauseRequested; }
    void stopPaused() { number_ = stoppingPaused; }
    /// The row goes: none is left where it was this one.
    void forget(int row) {
        if (number_ == row)
            clear();
    }

private:
    int number_;
};
