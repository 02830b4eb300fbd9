#include "CCellBlock.h"

#include <algorithm>
#include <array>
#include <bit>

namespace NSKZ::NSKZCore {

namespace {

constexpr DWORD WORD_BITS = 32;
constexpr DWORD WORDS_OF_HEAD = 2;
constexpr DWORD WORDS_BEHIND = 2;

enum EManner : DWORD
{
    MANNER_EVEN = 0,
    MANNER_RISING = 1,
    MANNER_ASCENDING = 2,
};

constexpr DWORD GetWordsOfBits(std::uint64_t bits) noexcept
{
    return static_cast<DWORD>((bits + WORD_BITS - 1) / WORD_BITS);
}

constexpr DWORD GetMask(DWORD width) noexcept
{
    return static_cast<DWORD>((std::uint64_t{1} << width) - 1);
}

// The `width` bits from a bit on.
inline DWORD GetBits(const DWORD* words, DWORD bit, DWORD mask) noexcept
{
    const DWORD* const word = words + bit / WORD_BITS;
    const std::uint64_t both = std::uint64_t{word[0]} | std::uint64_t{word[1]} << WORD_BITS;
    return static_cast<DWORD>(both >> bit % WORD_BITS) & mask;
}

// The head of a group, as it is used.
struct SHead
{
    SHead(const DWORD* words, DWORD group) noexcept
        : base(words[WORDS_OF_HEAD * group]), code(words[WORDS_OF_HEAD * group + 1])
    {}

    DWORD GetWidth() const noexcept { return code & 63; }
    DWORD GetManner() const noexcept { return code >> 6 & 3; }
    DWORD GetRoundWidth() const noexcept { return code >> 8 & 63; }
    DWORD GetBegin() const noexcept { return code >> 16; }
    bool HasUnusedBits() const noexcept { return (code & 0xc000) != 0; }

    DWORD base;
    DWORD code;
};

// What of a cell of an even or a rising group is not in its rest.
struct SFrame
{
    SFrame(const DWORD* words, const SHead& head) noexcept
        : data(words + head.GetBegin()), base(head.base), width(head.GetWidth()), mask(GetMask(width)),
          placeMask(head.GetManner() == MANNER_RISING ? GetMask(WORD_BITS) : 0)
    {}

    DWORD GetCell(DWORD place) const noexcept
    {
        return base + (place & placeMask) + GetBits(data, place * width, mask);
    }

    const DWORD* data;
    DWORD base;
    DWORD width;
    DWORD mask;
    DWORD placeMask;
};

// Copies cells of an ascending group of `count` cells.
void ReadAscending(const DWORD* words, const SHead& head, DWORD count, DWORD pos, DWORD readCount,
                   DWORD* cells) noexcept
{
    const DWORD width = head.GetWidth();
    const DWORD mask = GetMask(width);
    const DWORD roundMask = GetMask(head.GetRoundWidth());
    const DWORD* const low = words + head.GetBegin();
    const DWORD* high = low + GetWordsOfBits(std::uint64_t{count} * width);
    DWORD firstBit = 0;
    DWORD ones = *high;
    DWORD place = 0;
    for (auto held = static_cast<DWORD>(std::popcount(ones)); place + held <= pos;
         held = static_cast<DWORD>(std::popcount(ones))) {
        place += held;
        ones = *++high;
        firstBit += WORD_BITS;
    }
    for (; place < pos; ++place)
        ones &= ones - 1;
    for (const DWORD end = pos + readCount; place < end; ++place) {
        while (ones == 0) {
            ones = *++high;
            firstBit += WORD_BITS;
        }
        const DWORD zeros = firstBit + static_cast<DWORD>(std::countr_zero(ones)) - place;
        ones &= ones - 1;
        *cells++ = (head.base + place + (zeros << width) + GetBits(low, place * width, mask)) & roundMask;
    }
}

// Whether the code of the high parts of `count` cells fills these words: as many ones as there are cells, the
// last of them in the last word.
bool IsUnaryCode(const DWORD* words, DWORD wordCount, DWORD count) noexcept
{
    std::uint64_t ones = 0;
    for (DWORD i = 0; i < wordCount; ++i)
        ones += static_cast<DWORD>(std::popcount(words[i]));
    return ones == count && words[wordCount - 1] != 0;
}

} // namespace

CCellBlock::CCellBlock(DWORD countOfCells, const DWORD* wordsOfBlock, DWORD countOfWords)
    : words(new DWORD[std::size_t{countOfWords} + WORDS_BEHIND]), wordCount(countOfWords), count(countOfCells)
{
    std::copy_n(wordsOfBlock, countOfWords, words.get());
    std::fill_n(words.get() + countOfWords, WORDS_BEHIND, DWORD{0});
}

DWORD CCellBlock::GetGroupCount(const SCellForm& form) const noexcept
{
    return (count + (DWORD{1} << form.groupShift) - 1) >> form.groupShift;
}

bool CCellBlock::Prove(const SCellForm& form) const noexcept
{
    if (count == 0 || count > form.cellsOfBlock)
        return false;
    const DWORD groupCount = GetGroupCount(form);
    if (wordCount < WORDS_OF_HEAD * groupCount)
        return false;
    DWORD begin = WORDS_OF_HEAD * groupCount;
    for (DWORD group = 0; group < groupCount; ++group) {
        const SHead head(words.get(), group);
        const DWORD end = group + 1 < groupCount ? SHead(words.get(), group + 1).GetBegin() : wordCount;
        const DWORD cellCount = std::min(DWORD{1} << form.groupShift, count - (group << form.groupShift));
        if (head.GetBegin() != begin || end < begin || end > wordCount || head.HasUnusedBits() ||
            head.GetWidth() > WORD_BITS)
            return false;
        const DWORD wordsOfRests = GetWordsOfBits(std::uint64_t{cellCount} * head.GetWidth());
        switch (head.GetManner()) {
        case MANNER_EVEN:
        case MANNER_RISING:
            if (end - begin != wordsOfRests || head.GetRoundWidth() != 0)
                return false;
            break;
        case MANNER_ASCENDING:
            if (!form.mayBeAscending || head.GetWidth() == WORD_BITS || head.GetRoundWidth() > WORD_BITS ||
                end - begin <= wordsOfRests ||
                !IsUnaryCode(words.get() + begin + wordsOfRests, end - begin - wordsOfRests, cellCount))
                return false;
            break;
        default:
            return false;
        }
        begin = end;
    }
    return true;
}

void CCellBlock::Read(const SCellForm& form, DWORD pos, DWORD readCount, DWORD* cells) const noexcept
{
    const DWORD groupSize = DWORD{1} << form.groupShift;
    while (readCount != 0) {
        const DWORD group = pos >> form.groupShift;
        const DWORD place = pos & (groupSize - 1);
        const DWORD taken = std::min(readCount, groupSize - place);
        const SHead head(words.get(), group);
        if (head.GetManner() == MANNER_ASCENDING) {
            ReadAscending(words.get(), head, std::min(groupSize, count - (group << form.groupShift)), place,
                          taken, cells);
        } else {
            const SFrame frame(words.get(), head);
            for (DWORD i = 0; i < taken; ++i)
                cells[i] = frame.GetCell(place + i);
        }
        pos += taken;
        cells += taken;
        readCount -= taken;
    }
}

DWORD CCellBlock::ReadListed(const SCellForm& form, DWORD first, const DWORD* positions, DWORD listCount,
                             DWORD* cells) const noexcept
{
    DWORD done = 0;
    while (done < listCount && positions[done] - first < count) {
        const DWORD group = (positions[done] - first) >> form.groupShift;
        const DWORD firstOfGroup = first + (group << form.groupShift);
        const DWORD size = std::min(DWORD{1} << form.groupShift, count - (group << form.groupShift));
        const SHead head(words.get(), group);
        if (head.GetManner() == MANNER_ASCENDING) {
            ReadAscending(words.get(), head, size, positions[done] - firstOfGroup, 1, cells + done);
            ++done;
            continue;
        }
        const SFrame frame(words.get(), head);
        do {
            cells[done] = frame.GetCell(positions[done] - firstOfGroup);
            ++done;
        } while (done < listCount && positions[done] - firstOfGroup < size);
    }
    return done;
}

CCellPacker::CCellPacker(const SCellForm& formOfBlocks)
    : form(formOfBlocks),
      // At worst a cell takes a word; the heads and a word more for each group come to it.
      words(std::size_t{form.cellsOfBlock} +
            (std::size_t{form.cellsOfBlock >> form.groupShift} + 1) * (WORDS_OF_HEAD + 1) + 1)
{}

CCellBlock CCellPacker::Pack(const DWORD* cells, DWORD count)
{
    std::fill_n(words.begin(), used, DWORD{0});
    const DWORD groupSize = DWORD{1} << form.groupShift;
    const DWORD groupCount = (count + groupSize - 1) >> form.groupShift;
    used = WORDS_OF_HEAD * groupCount;
    for (DWORD group = 0; group < groupCount; ++group) {
        const DWORD first = group << form.groupShift;
        const DWORD begin = used;
        DWORD base = 0;
        const DWORD code = PackGroup(cells + first, std::min(groupSize, count - first), base);
        words[WORDS_OF_HEAD * group] = base;
        words[WORDS_OF_HEAD * group + 1] = code | begin << 16;
    }
    return CCellBlock(count, words.data(), used);
}

DWORD CCellPacker::PackGroup(const DWORD* cells, DWORD count, DWORD& base)
{
    DWORD smallest = cells[0];
    DWORD largest = cells[0];
    std::int64_t smallestLowered = cells[0];
    std::int64_t largestLowered = cells[0];
    DWORD notRisen = 0;
    for (DWORD i = 1; i < count; ++i) {
        smallest = std::min(smallest, cells[i]);
        largest = std::max(largest, cells[i]);
        const std::int64_t lowered = std::int64_t{cells[i]} - i;
        smallestLowered = std::min(smallestLowered, lowered);
        largestLowered = std::max(largestLowered, lowered);
        notRisen += cells[i] <= cells[i - 1] ? 1 : 0;
    }
    const auto evenWidth = static_cast<DWORD>(std::bit_width(largest - smallest));
    const auto risingWidth =
        static_cast<DWORD>(std::bit_width(static_cast<std::uint64_t>(largestLowered - smallestLowered)));
    const bool isRising = risingWidth < evenWidth;
    const DWORD width = isRising ? risingWidth : evenWidth;
    const DWORD wordsOfRests = GetWordsOfBits(std::uint64_t{count} * width);

    if (form.mayBeAscending && width != 0) {
        const auto roundWidth = static_cast<DWORD>(std::bit_width(largest));
        // What the last cell is above the first one, less its place.
        const std::uint64_t above =
            (std::uint64_t{notRisen} << roundWidth) + cells[count - 1] - cells[0] - (count - 1);
        const auto getWords = [&](DWORD lowWidth) {
            return GetWordsOfBits(std::uint64_t{count} * lowWidth) +
                   GetWordsOfBits((above >> lowWidth) + count);
        };
        DWORD lowWidth = std::min<DWORD>(static_cast<DWORD>(std::bit_width(above / count)), WORD_BITS - 1);
        if (lowWidth != 0 && getWords(lowWidth - 1) <= getWords(lowWidth))
            --lowWidth;
        if (getWords(lowWidth) < wordsOfRests) {
            base = cells[0];
            const std::uint64_t lowBegin = std::uint64_t{used} * WORD_BITS;
            const std::uint64_t highBegin =
                lowBegin + std::uint64_t{GetWordsOfBits(std::uint64_t{count} * lowWidth)} * WORD_BITS;
            std::uint64_t round = 0;
            for (DWORD i = 0; i < count; ++i) {
                if (i != 0 && cells[i] <= cells[i - 1])
                    round += std::uint64_t{1} << roundWidth;
                const std::uint64_t rest = round + cells[i] - cells[0] - i;
                PutBits(lowBegin + std::uint64_t{i} * lowWidth, static_cast<DWORD>(rest) & GetMask(lowWidth));
                PutBits(highBegin + (rest >> lowWidth) + i, 1);
            }
            used += getWords(lowWidth);
            return lowWidth | MANNER_ASCENDING << 6 | roundWidth << 8;
        }
    }
    base = isRising ? static_cast<DWORD>(smallestLowered) : smallest;
    PutRests(cells, count, base, isRising ? 1 : 0, width);
    used += wordsOfRests;
    return width | (isRising ? MANNER_RISING : MANNER_EVEN) << 6;
}

void CCellPacker::PutRests(const DWORD* cells, DWORD count, DWORD base, DWORD step, DWORD width) noexcept
{
    if (width == 0)
        return;
    const std::uint64_t begin = std::uint64_t{used} * WORD_BITS;
    for (DWORD i = 0; i < count; ++i)
        PutBits(begin + std::uint64_t{i} * width, cells[i] - base - i * step);
}

// Sets bits that are 0 as yet.
void CCellPacker::PutBits(std::uint64_t bit, DWORD value) noexcept
{
    DWORD* const word = words.data() + bit / WORD_BITS;
    const std::uint64_t both = std::uint64_t{value} << bit % WORD_BITS;
    word[0] |= static_cast<DWORD>(both);
    word[1] |= static_cast<DWORD>(both >> WORD_BITS);
}

} // namespace NSKZ::NSKZCore
