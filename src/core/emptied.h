#pragma once
// What a read leaves behind when it ends early.

namespace NBrenmark {

/// Empties what is being read when that ends early: half a family has arrays of different lengths.
template <class TObject>
class CEmptiedUnlessWhole
{
public:
    explicit CEmptiedUnlessWhole(TObject& object) : object(object) {}
    ~CEmptiedUnlessWhole()
    {
        if (!whole)
            object.clear();
    }
    CEmptiedUnlessWhole(const CEmptiedUnlessWhole&) = delete;
    CEmptiedUnlessWhole& operator=(const CEmptiedUnlessWhole&) = delete;

    bool whole = false;

private:
    TObject& object;
};

} // namespace NBrenmark
