#pragma once

// What the launcher says and how it ends when it cannot become ffmpeg; the window reads it.

inline constexpr int missingEncoderStatus = 127;
/// How its line begins then.
inline constexpr char missingEncoderWords[] = "reelshift: there is no ffmpeg to run: ";

inline constexpr int unsuitableEncoderStatus = 126;
inline constexpr char unsuitableEncoderWords[] = "reelshift: this ffmpeg has no libx264: ";

/// How a movie is refused that is a list of other files.
inline constexpr int listOfFilesStatus = 1;
inline constexpr char listOfFilesWords[] = "reelshift: this is no movie but a list of files";

/// How the lines begin that are for the log alone: none of them holds a name.
inline constexpr char remarkWords[] = "reelshift: for the log: ";
