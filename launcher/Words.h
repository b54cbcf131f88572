#pragma once

// What the launcher says and how it ends when it cannot become ffmpeg; the window reads it.

inline constexpr int missingEncoderStatus = 127;
/// How its line begins then.
inline constexpr char missingEncoderWords[] = "reelshift: there is no ffmpeg to run: ";

inline constexpr int unsuitableEncoderStatus = 126;
inline constexpr char unsuitableEncoderWords[] = "reelshift: this ffmpeg has no libx264: ";
