#pragma once
// Keeps what libraries print out of the results: while it lives, standard output leads to standard error.

namespace NBrenmark {

class COutputAside
{
public:
    COutputAside();
    ~COutputAside();
    COutputAside(const COutputAside&) = delete;
    COutputAside& operator=(const COutputAside&) = delete;

private:
    int output; ///< the descriptor of the real one; below 0 if it couldn't be kept
};

} // namespace NBrenmark
