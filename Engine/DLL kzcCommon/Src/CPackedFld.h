#ifndef CPACKEDFLD_H
#define CPACKEDFLD_H

#include "CCellBlock.h"

#include <cstddef>
#include <vector>

namespace NSKZ::NSKZCore {

// The cells of one field, packed in blocks that stand in the order of the cells. A change anywhere packs the
// blocks anew that it touches, and moves the index of blocks.
//
// The same form is given to every operation of a field.
class CPackedFld
{
public:
    // A change made ready, to be put in force by Apply. It holds good as long as the field is not changed.
    struct SChange
    {
        std::size_t blockBegin = 0; // the blocks that it replaces
        std::size_t blockEnd = 0;
        std::vector<CCellBlock> newBlocks;
        DWORD newCount = 0; // cells of the whole field
    };

    DWORD GetCount() const noexcept { return count; }

    // Makes ready to put `newCount` cells in the place of the `oldCount` cells from `pos` on, which are all
    // there; the field does not become longer than a DWORD tells. `cells` are their bytes; null stands for
    // cells of 0. Throws std::bad_alloc with nothing changed.
    SChange Prepare(const SCellForm& form, DWORD pos, DWORD oldCount, DWORD newCount,
                    const unsigned char* cells);
    // Puts the change in force.
    void Apply(SChange&& change) noexcept;

    // Copies the cells from `pos` on, which are all there.
    void Read(const SCellForm& form, DWORD pos, DWORD readCount, DWORD* cells) const noexcept;

    // Copies the cells at the listed positions. False, with any of them written, if one of them is not there.
    bool ReadListed(const SCellForm& form, const DWORD* positions, DWORD listCount,
                    DWORD* cells) const noexcept;

    // A copy of its own. Throws std::bad_alloc.
    CPackedFld Clone() const;

    // The file form, which stands with VCFixedLenTbl_MemSavVer. False with the last error; a field that could
    // not be read is as it was. Throw std::bad_alloc, reading with the field as it was.
    bool WriteTo(const char* path) const;
    bool ReadFrom(const SCellForm& form, const char* path);

private:
    // The block that holds a cell that is there.
    std::size_t FindBlock(const SCellForm& form, DWORD pos) const noexcept;
    DWORD GetEnd(std::size_t block) const noexcept { return firsts[block] + blocks[block].GetCount(); }

    std::vector<CCellBlock> blocks; // none is empty
    std::vector<DWORD> firsts;      // the first cell of each
    DWORD count = 0;
};

} // namespace NSKZ::NSKZCore

#endif
