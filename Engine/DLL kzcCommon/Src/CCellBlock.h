#ifndef CCELLBLOCK_H
#define CCELLBLOCK_H

#include "KzcPlatform.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace NSKZ::NSKZCore {

// How the cells of a field are packed: the same for all blocks of a table.
struct SCellForm
{
    DWORD cellsOfBlock = 0; // how many cells a block holds at most: a multiple of those of a group
    DWORD groupShift =
        0; // a group has 2 to the power of this cells, the last one of a block as many as there are
    bool mayBeAscending = false; // whether a group may be packed so that it is read from its beginning only

    bool operator==(const SCellForm&) const = default;
};

// Some thousands of packed cells of 32 bits, read-only once it is made.
//
// Cells lie in groups, and each group is packed in the manner that takes the fewest bits for it:
//
// - even: every cell is the smallest one of its group and a rest, which takes as many bits as the largest
//   rest needs;
// - rising: the same, with what is left when each cell is lowered by its place in the group, so that numbers
//   in unbroken sequence take no bits at all;
// - ascending (where the form allows it): cells that mostly rise. A cell that does not is taken for a new
//   round, as if the next power of two had been added to it and to all behind it, so that all rise by 1 or
//   more. Of what a cell is above the first one, less its place, the low bits lie side by side; the high
//   ones are told by unary code: a 1 for each cell, behind as many 0 as the high part has risen since the
//   cell before. That is some 2.5 bits and the logarithm of the mean step for a cell, one round or many.
//
// A cell of an even or a rising group is read by itself; of an ascending one, all before it are passed over.
//
// Words of 32 bits, from the lowest bit on. First a head of two words for each group: the smallest cell
// (rising: the smallest lowered one, ascending: the first cell); and bits 0 to 5 the width of a rest
// (ascending: of the low part), bits 6 and 7 the manner (0 even, 1 rising, 2 ascending), bits 8 to 13 the
// width of a round (0 but in ascending groups), bits 16 to 31 the word at which its cells begin. Then the
// cells of the groups, each group at a whole word, without a gap.
class CCellBlock
{
public:
    // No cells.
    CCellBlock() noexcept = default;
    // Takes what another block of the same form has shown by GetWords: to be used only once Prove has been
    // true. Throws std::bad_alloc.
    CCellBlock(DWORD countOfCells, const DWORD* wordsOfBlock, DWORD countOfWords);

    CCellBlock Clone() const { return CCellBlock(count, words.get(), wordCount); }

    DWORD GetCount() const noexcept { return count; }
    const DWORD* GetWords() const noexcept { return words.get(); }
    DWORD GetWordCount() const noexcept { return wordCount; }

    // Whether these words are what a block of so many cells, from 1 to those of the form, can have: then no
    // read leaves it, whatever its cells are.
    bool Prove(const SCellForm& form) const noexcept;

    // Copies the cells from `pos` on, which are all there.
    void Read(const SCellForm& form, DWORD pos, DWORD readCount, DWORD* cells) const noexcept;

    // Copies the cells at the listed positions, each less `first`, as long as they lie in this block. Returns
    // how many did.
    DWORD ReadListed(const SCellForm& form, DWORD first, const DWORD* positions, DWORD listCount,
                     DWORD* cells) const noexcept;

private:
    DWORD GetGroupCount(const SCellForm& form) const noexcept;

    std::unique_ptr<DWORD[]> words; // and two more behind them: two may be read wherever a cell of no bits is
    DWORD wordCount = 0;
    DWORD count = 0;
};

// Packs cells into blocks. It keeps the room to work in.
class CCellPacker
{
public:
    // Throws std::bad_alloc, as does Pack.
    explicit CCellPacker(const SCellForm& form);

    // The block of these cells, from 1 to those of the form.
    CCellBlock Pack(const DWORD* cells, DWORD count);

private:
    // Packs a group and returns the second word of its head, without the position.
    DWORD PackGroup(const DWORD* cells, DWORD count, DWORD& base);
    void PutRests(const DWORD* cells, DWORD count, DWORD base, DWORD step, DWORD width) noexcept;
    void PutBits(std::uint64_t bit, DWORD value) noexcept;

    SCellForm form;
    std::vector<DWORD> words; // all 0 behind those that are used
    DWORD used = 0;
};

} // namespace NSKZ::NSKZCore

#endif
