#include "CPackedFld.h"

#include "CBinaryReader.h"
#include "CBinaryWriter.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// Cuts a row of cells, which comes in pieces, into blocks. All but the last two are full, and these share
// what is left: so a full block that gets one cell more becomes two that have room.
class CBlockCutter
{
public:
    // `total` is how many cells will come.
    CBlockCutter(const SCellForm& formOfBlocks, std::uint64_t total)
        : form(formOfBlocks), rest(total), packer(formOfBlocks),
          held(static_cast<std::size_t>(std::min<std::uint64_t>(total, formOfBlocks.cellsOfBlock)))
    {
        newBlocks.reserve(static_cast<std::size_t>(total / form.cellsOfBlock) + 2);
        BeginBlock();
    }

    // The next cells, told by read(cells, pos, count), which copies those from `pos` on.
    template <class TRead>
    void Append(DWORD count, const TRead& read)
    {
        for (DWORD pos = 0; pos < count;) {
            const DWORD taken = std::min(count - pos, sizeOfBlock - heldCount);
            read(held.data() + heldCount, pos, taken);
            pos += taken;
            heldCount += taken;
            if (heldCount == sizeOfBlock) {
                newBlocks.push_back(packer.Pack(held.data(), heldCount));
                BeginBlock();
            }
        }
    }

    // The next cells, which are 0. Full blocks of them are copies of one.
    void AppendZeros(DWORD count)
    {
        const auto readZeros = [](DWORD* cells, DWORD, DWORD zeroCount) {
            std::fill_n(cells, zeroCount, DWORD{0});
        };
        while (count != 0) {
            const DWORD taken = std::min(count, sizeOfBlock - heldCount);
            const bool isWholeBlock = taken == form.cellsOfBlock;
            if (isWholeBlock && zeroBlock.GetCount() != 0) {
                newBlocks.push_back(zeroBlock.Clone());
                BeginBlock();
            } else {
                Append(taken, readZeros);
                if (isWholeBlock)
                    zeroBlock = newBlocks.back().Clone();
            }
            count -= taken;
        }
    }

    // The blocks, once all cells have come.
    std::vector<CCellBlock>&& TakeBlocks() noexcept { return std::move(newBlocks); }

private:
    void BeginBlock() noexcept
    {
        const DWORD full = form.cellsOfBlock;
        const DWORD groupSize = DWORD{1} << form.groupShift;
        if (rest <= full)
            sizeOfBlock = static_cast<DWORD>(rest);
        else if (rest <= std::uint64_t{full} * 2) // half of it, in whole groups
            sizeOfBlock = static_cast<DWORD>((rest / 2 + groupSize - 1) & ~std::uint64_t{groupSize - 1});
        else
            sizeOfBlock = full;
        rest -= sizeOfBlock;
        heldCount = 0;
    }

    const SCellForm& form;
    std::uint64_t rest; // cells that will come behind the block that is being filled
    CCellPacker packer;
    std::vector<DWORD> held; // cells of that block
    DWORD heldCount = 0;
    DWORD sizeOfBlock = 0;
    std::vector<CCellBlock> newBlocks;
    CCellBlock zeroBlock; // a full one, if there has been one
};

constexpr DWORD NUMBERS_OF_HEAD = 2;       // of a file: its cells and its blocks
constexpr DWORD NUMBERS_OF_BLOCK_HEAD = 2; // cells and words of a block

bool FailAsInvalid() noexcept
{
    SetLastError(ERROR_INVALID_DATA);
    return false;
}

} // namespace

std::size_t CPackedFld::FindBlock(const SCellForm& form, DWORD pos) const noexcept
{
    // Where all blocks are full it is this one, and otherwise none before it.
    const std::size_t earliest = pos / form.cellsOfBlock;
    if (earliest + 1 == blocks.size() || (earliest + 1 < blocks.size() && pos < firsts[earliest + 1]))
        return earliest;
    const auto behind =
        std::upper_bound(firsts.begin() + static_cast<std::ptrdiff_t>(earliest), firsts.end(), pos);
    return static_cast<std::size_t>(behind - firsts.begin()) - 1;
}

CPackedFld::SChange CPackedFld::Prepare(const SCellForm& form, DWORD pos, DWORD oldCount, DWORD newCount,
                                        const unsigned char* cells)
{
    SChange change;
    change.newCount = count - oldCount + newCount;
    if (oldCount == 0 && newCount == 0)
        return change;

    // What stays of the blocks that are touched: the cells from keptBegin to pos, and from behindOld to
    // keptEnd.
    const DWORD behindOld = pos + oldCount;
    DWORD keptBegin = pos;
    DWORD keptEnd = behindOld;
    if (!blocks.empty()) {
        change.blockBegin = FindBlock(form, std::min(pos, count - 1));
        change.blockEnd = FindBlock(form, oldCount != 0 ? behindOld - 1 : std::min(pos, count - 1)) + 1;
        keptBegin = firsts[change.blockBegin];
        keptEnd = GetEnd(change.blockEnd - 1);
        // A small block is joined to a neighbour, so that there are never many of them.
        const std::uint64_t total = std::uint64_t{pos - keptBegin} + newCount + (keptEnd - behindOld);
        const auto fitsBeside = [&](std::size_t block) {
            return total < form.cellsOfBlock / 2 && total + blocks[block].GetCount() <= form.cellsOfBlock;
        };
        if (change.blockEnd < blocks.size() && fitsBeside(change.blockEnd))
            keptEnd = GetEnd(change.blockEnd++);
        else if (change.blockBegin != 0 && fitsBeside(change.blockBegin - 1))
            keptBegin = firsts[--change.blockBegin];
    }

    CBlockCutter cutter(form, std::uint64_t{pos - keptBegin} + newCount + (keptEnd - behindOld));
    cutter.Append(pos - keptBegin, [&](DWORD* out, DWORD from, DWORD readCount) {
        Read(form, keptBegin + from, readCount, out);
    });
    if (cells == nullptr)
        cutter.AppendZeros(newCount);
    else
        cutter.Append(newCount, [cells](DWORD* out, DWORD from, DWORD readCount) {
            std::memcpy(out, cells + std::size_t{from} * sizeof(DWORD),
                        std::size_t{readCount} * sizeof(DWORD));
        });
    cutter.Append(keptEnd - behindOld, [&](DWORD* out, DWORD from, DWORD readCount) {
        Read(form, behindOld + from, readCount, out);
    });
    change.newBlocks = cutter.TakeBlocks();

    // Room for the index as it will be, so that Apply needs no memory.
    const std::size_t newSize =
        blocks.size() - (change.blockEnd - change.blockBegin) + change.newBlocks.size();
    blocks.reserve(newSize);
    firsts.reserve(newSize);
    return change;
}

void CPackedFld::Apply(SChange&& change) noexcept
{
    const auto begin = blocks.begin() + static_cast<std::ptrdiff_t>(change.blockBegin);
    const std::size_t replaced = change.blockEnd - change.blockBegin;
    const std::size_t same = std::min(replaced, change.newBlocks.size());
    const auto sameEnd = change.newBlocks.begin() + static_cast<std::ptrdiff_t>(same);
    const auto behindSame = std::move(change.newBlocks.begin(), sameEnd, begin);
    if (same < replaced)
        blocks.erase(behindSame, begin + static_cast<std::ptrdiff_t>(replaced));
    else
        blocks.insert(behindSame, std::make_move_iterator(sameEnd),
                      std::make_move_iterator(change.newBlocks.end()));
    firsts.resize(blocks.size());
    for (std::size_t block = change.blockBegin; block < blocks.size(); ++block)
        firsts[block] = block == 0 ? 0 : GetEnd(block - 1);
    count = change.newCount;
}

void CPackedFld::Read(const SCellForm& form, DWORD pos, DWORD readCount, DWORD* cells) const noexcept
{
    if (readCount == 0)
        return;
    for (std::size_t block = FindBlock(form, pos); readCount != 0; ++block) {
        const DWORD taken = std::min(readCount, GetEnd(block) - pos);
        blocks[block].Read(form, pos - firsts[block], taken, cells);
        pos += taken;
        cells += taken;
        readCount -= taken;
    }
}

bool CPackedFld::ReadListed(const SCellForm& form, const DWORD* positions, DWORD listCount,
                            DWORD* cells) const noexcept
{
    for (DWORD done = 0; done < listCount;) {
        if (positions[done] >= count)
            return false;
        const std::size_t block = FindBlock(form, positions[done]);
        done +=
            blocks[block].ReadListed(form, firsts[block], positions + done, listCount - done, cells + done);
    }
    return true;
}

CPackedFld CPackedFld::Clone() const
{
    CPackedFld copy;
    copy.blocks.reserve(blocks.size());
    for (const CCellBlock& block : blocks)
        copy.blocks.push_back(block.Clone());
    copy.firsts = firsts;
    copy.count = count;
    return copy;
}

bool CPackedFld::WriteTo(const char* path) const
{
    CBinaryWriter writer(path, true);
    writer.WriteData(count);
    writer.WriteData(static_cast<DWORD>(blocks.size()));
    for (const CCellBlock& block : blocks) {
        writer.WriteData(block.GetCount());
        writer.WriteData(block.GetWordCount());
    }
    for (const CCellBlock& block : blocks)
        writer.WriteData(block.GetWords(), block.GetWordCount());
    return writer.Close();
}

bool CPackedFld::ReadFrom(const SCellForm& form, const char* path)
{
    CBinaryReader reader(path, true);
    unsigned long long size = 0;
    if (!reader.GetFileSize(size))
        return false;
    // Nothing is taken for true that the numbers of the file do not bear out.
    std::uint64_t rest = size / sizeof(DWORD);
    DWORD cellCount = 0;
    DWORD blockCount = 0;
    if (size % sizeof(DWORD) != 0 || rest < NUMBERS_OF_HEAD)
        return FailAsInvalid();
    rest -= NUMBERS_OF_HEAD;
    if (reader.ReadData(cellCount) != CBinaryReader::READDATA_OK ||
        reader.ReadData(blockCount) != CBinaryReader::READDATA_OK)
        return false;
    if (blockCount > rest / NUMBERS_OF_BLOCK_HEAD)
        return FailAsInvalid();
    rest -= std::uint64_t{blockCount} * NUMBERS_OF_BLOCK_HEAD;
    std::vector<DWORD> heads(std::size_t{blockCount} * NUMBERS_OF_BLOCK_HEAD);
    if (reader.ReadData(heads.data(), static_cast<DWORD>(heads.size())) != CBinaryReader::READDATA_OK)
        return false;

    CPackedFld read;
    read.blocks.reserve(blockCount);
    read.firsts.reserve(blockCount);
    std::uint64_t cellsSoFar = 0;
    std::vector<DWORD> words;
    for (std::size_t block = 0; block < blockCount; ++block) {
        const DWORD cellsOfBlock = heads[NUMBERS_OF_BLOCK_HEAD * block];
        const DWORD wordCount = heads[NUMBERS_OF_BLOCK_HEAD * block + 1];
        if (wordCount > rest)
            return FailAsInvalid();
        rest -= wordCount;
        words.resize(wordCount);
        if (reader.ReadData(words.data(), wordCount) != CBinaryReader::READDATA_OK)
            return false;
        read.blocks.emplace_back(cellsOfBlock, words.data(), wordCount);
        read.firsts.push_back(static_cast<DWORD>(cellsSoFar));
        cellsSoFar += cellsOfBlock;
        if (!read.blocks.back().Prove(form) || cellsSoFar > cellCount)
            return FailAsInvalid();
    }
    if (rest != 0 || cellsSoFar != cellCount)
        return FailAsInvalid();
    read.count = cellCount;
    *this = std::move(read);
    return true;
}

} // namespace NSKZ::NSKZCore
