#pragma once
// The only random source of the library.

namespace NBrenmark {

/// Greatest number that randomNumber gives.
constexpr int greatestRandomNumber = 32767;

/// Starts the sequence anew; equal seeds give equal sequences.
void seedRandom(unsigned int seed);

/// The next number of the sequence, uniform on 0 to 32767.
int randomNumber();

/// randomNumber() x 3.051850947599719e-05: uniform on 0 to 1, both included.
double uniform();

} // namespace NBrenmark
