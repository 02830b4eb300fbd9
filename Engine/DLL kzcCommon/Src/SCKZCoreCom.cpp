#include "SCKZCoreCom.h"

#include "SCNumeric.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <deque>
#include <limits>
#include <system_error>
#include <utility>

namespace NSKZ::NSKZCore {

namespace {

// From this ratio of the lengths on, each number of the short list is searched in the long one instead of
// walking both.
constexpr DWORD SEARCH_RATIO = 32;

// The doubles that no digits tell, as std::to_chars writes them.
struct SWordOfDouble
{
    const char* text;
    double value;
};
constexpr SWordOfDouble WORDS_OF_DOUBLES[] = {
    {"inf", std::numeric_limits<double>::infinity()},
    {"-inf", -std::numeric_limits<double>::infinity()},
    {"nan", std::numeric_limits<double>::quiet_NaN()},
};

// A value and the word it is saved by.
template <typename TEnum>
struct SWordOfEnum
{
    TEnum value;
    const char* text;
    DWORD textLen;
};
constexpr SWordOfEnum<SCKZCoreCom::EEndianness> WORDS_OF_ENDIANNESS[] = {
    {SCKZCoreCom::ENDIANNESS_LITTLE, SCKZCoreCom::STR_ATTRVALUE_ENDIANNESS_LITTLE,
     SCKZCoreCom::STRLEN_ATTRVALUE_ENDIANNESS_LITTLE},
    {SCKZCoreCom::ENDIANNESS_BIG, SCKZCoreCom::STR_ATTRVALUE_ENDIANNESS_BIG,
     SCKZCoreCom::STRLEN_ATTRVALUE_ENDIANNESS_BIG},
};
constexpr SWordOfEnum<SCKZCoreCom::EDataModel> WORDS_OF_DATA_MODELS[] = {
    {SCKZCoreCom::DATAMODEL_ILP32, SCKZCoreCom::STR_ATTRVALUE_DATAMODEL_ILP32,
     SCKZCoreCom::STRLEN_ATTRVALUE_DATAMODEL_ILP32},
    {SCKZCoreCom::DATAMODEL_LLP64, SCKZCoreCom::STR_ATTRVALUE_DATAMODEL_LLP64,
     SCKZCoreCom::STRLEN_ATTRVALUE_DATAMODEL_LLP64},
    {SCKZCoreCom::DATAMODEL_LP64, SCKZCoreCom::STR_ATTRVALUE_DATAMODEL_LP64,
     SCKZCoreCom::STRLEN_ATTRVALUE_DATAMODEL_LP64},
};

template <typename TWords, typename TEnum>
bool GetWord(const TWords& words, TEnum value, const char*& text, DWORD& textLen) noexcept
{
    for (const auto& word : words) {
        if (word.value == value) {
            text = word.text;
            textLen = word.textLen;
            return true;
        }
    }
    return false;
}

template <typename TWords, typename TEnum>
bool GetValueOfWord(const TWords& words, const char* text, DWORD textLen, TEnum& value) noexcept
{
    for (const auto& word : words) {
        if (IXMLIO::IsSameText(text, textLen, word.text, word.textLen)) {
            value = word.value;
            return true;
        }
    }
    return false;
}

DWORD CopyRecs(DWORD* out, const DWORD* recs, DWORD count) noexcept
{
    if (count != 0)
        std::memcpy(out, recs, count * sizeof(DWORD));
    return count;
}

template <typename TNumber>
bool WriteNumber(TNumber value, char* buffer, DWORD size, DWORD& length) noexcept
{
    // Written apart first: where it does not fit, the buffer stays as it was.
    char text[32];
    const std::to_chars_result result = std::to_chars(text, text + sizeof text, value);
    const std::size_t len = static_cast<std::size_t>(result.ptr - text);
    if (result.ec != std::errc() || len >= size)
        return false;
    std::memcpy(buffer, text, len);
    buffer[len] = '\0';
    length = static_cast<DWORD>(len);
    return true;
}

template <typename TUnsigned>
bool ReadUnsigned(const char* text, DWORD len, TUnsigned& value) noexcept
{
    TUnsigned read = 0;
    const std::from_chars_result result = std::from_chars(text, text + len, read);
    if (result.ec != std::errc() || result.ptr != text + len)
        return false;
    value = read;
    return true;
}

std::vector<DWORD> CopyQueue(std::queue<DWORD> numbers)
{
    std::vector<DWORD> copy;
    copy.reserve(numbers.size());
    for (; !numbers.empty(); numbers.pop())
        copy.push_back(numbers.front());
    return copy;
}

std::queue<DWORD> MakeQueue(const std::vector<DWORD>& numbers)
{
    return std::queue<DWORD>(std::deque<DWORD>(numbers.begin(), numbers.end()));
}

} // namespace

bool SCKZCoreCom::IsDirectoryPath(const char* path, DWORD pathLen) noexcept
{
    if (pathLen == 0 || (path[pathLen - 1] != CHAR_YEN && path[pathLen - 1] != '/'))
        return false;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(path);
    return _ismbstrail(bytes, bytes + pathLen - 1) == 0;
}

SCKZCoreCom::EEndianness SCKZCoreCom::GetEndiannessOfPresentEnvironment() noexcept
{
    static_assert(std::endian::native == std::endian::little || std::endian::native == std::endian::big);
    return std::endian::native == std::endian::little ? ENDIANNESS_LITTLE : ENDIANNESS_BIG;
}

SCKZCoreCom::EDataModel SCKZCoreCom::GetDataModelOfPresentEnvironment() noexcept
{
    static_assert(sizeof(int) == 4 && sizeof(long) <= sizeof(void*));
    if (sizeof(void*) == 4)
        return DATAMODEL_ILP32;
    return sizeof(long) == 4 ? DATAMODEL_LLP64 : DATAMODEL_LP64;
}

bool SCKZCoreCom::GetEndiannessStr(EEndianness endianness, const char*& text, DWORD& textLen) noexcept
{
    return GetWord(WORDS_OF_ENDIANNESS, endianness, text, textLen);
}

bool SCKZCoreCom::GetDataModelStr(EDataModel dataModel, const char*& text, DWORD& textLen) noexcept
{
    return GetWord(WORDS_OF_DATA_MODELS, dataModel, text, textLen);
}

bool SCKZCoreCom::GetEndianness(const char* text, DWORD textLen, EEndianness& endianness) noexcept
{
    return GetValueOfWord(WORDS_OF_ENDIANNESS, text, textLen, endianness);
}

bool SCKZCoreCom::GetDataModel(const char* text, DWORD textLen, EDataModel& dataModel) noexcept
{
    return GetValueOfWord(WORDS_OF_DATA_MODELS, text, textLen, dataModel);
}

void SCKZCoreCom::GetBoolOperatorAttribute(EBoolOperator boolOperator, IXMLIO::SAttribute& attribute) noexcept
{
    attribute = boolOperator == BOOLOPERATOR_AND
                    ? IXMLIO::SAttribute{STR_ATTRNAME_BOOLOPERATOR, STRLEN_ATTRNAME_BOOLOPERATOR,
                                         STR_ATTRVALUE_BOOLOPERATOR_AND, STRLEN_ATTRVALUE_BOOLOPERATOR_AND}
                    : IXMLIO::SAttribute{STR_ATTRNAME_BOOLOPERATOR, STRLEN_ATTRNAME_BOOLOPERATOR,
                                         STR_ATTRVALUE_BOOLOPERATOR_OR, STRLEN_ATTRVALUE_BOOLOPERATOR_OR};
}

DWORD SCKZCoreCom::MergeRecListByANDCnd(DWORD* list, DWORD& count, const DWORD* other,
                                        DWORD otherCount) noexcept
{
    DWORD kept = 0;
    if (otherCount / SEARCH_RATIO >= count) {
        const DWORD* const otherEnd = other + otherCount;
        for (DWORD i = 0; i < count; ++i) {
            other = std::lower_bound(other, otherEnd, list[i]);
            if (other == otherEnd)
                break;
            if (*other == list[i])
                list[kept++] = list[i];
        }
    } else if (count / SEARCH_RATIO >= otherCount) {
        const DWORD* rest = list;
        const DWORD* const listEnd = list + count;
        for (DWORD i = 0; i < otherCount; ++i) {
            rest = std::lower_bound(rest, listEnd, other[i]);
            if (rest == listEnd)
                break;
            if (*rest == other[i]) {
                ++rest; // read before list[kept], which is never behind it, is written
                list[kept++] = other[i];
            }
        }
    } else {
        DWORD i = 0;
        DWORD j = 0;
        while (i < count && j < otherCount) {
            const DWORD mine = list[i];
            const DWORD theirs = other[j];
            list[kept] = mine;
            kept += mine == theirs ? 1 : 0;
            i += mine <= theirs ? 1 : 0;
            j += theirs <= mine ? 1 : 0;
        }
    }
    count = kept;
    return kept;
}

DWORD SCKZCoreCom::MergeRecListByORCnd(const DWORD* a, DWORD aCount, const DWORD* b, DWORD bCount,
                                       DWORD* out) noexcept
{
    DWORD i = 0;
    DWORD j = 0;
    DWORD written = 0;
    while (i < aCount && j < bCount) {
        const DWORD left = a[i];
        const DWORD right = b[j];
        out[written++] = left < right ? left : right;
        i += left <= right ? 1 : 0;
        j += right <= left ? 1 : 0;
    }
    written += CopyRecs(out + written, a + i, aCount - i);
    written += CopyRecs(out + written, b + j, bCount - j);
    return written;
}

void SCKZCoreCom::ClearQueueContainer(std::queue<DWORD>& numbers) noexcept
{
    while (!numbers.empty())
        numbers.pop();
}

void SCKZCoreCom::SortQueueContainer(std::queue<DWORD>& numbers)
{
    std::vector<DWORD> sorted = CopyQueue(numbers);
    std::sort(sorted.begin(), sorted.end());
    MakeQueue(sorted).swap(numbers);
}

bool SCKZCoreCom::ConvertNumericValueIntoString(int value, char* buffer, DWORD size, DWORD& length) noexcept
{
    return WriteNumber(value, buffer, size, length);
}

bool SCKZCoreCom::ConvertNumericValueIntoString(unsigned int value, char* buffer, DWORD size,
                                                DWORD& length) noexcept
{
    return WriteNumber(value, buffer, size, length);
}

bool SCKZCoreCom::ConvertNumericValueIntoString(unsigned long value, char* buffer, DWORD size,
                                                DWORD& length) noexcept
{
    return WriteNumber(value, buffer, size, length);
}

bool SCKZCoreCom::ConvertNumericValueIntoString(double value, char* buffer, DWORD size,
                                                DWORD& length) noexcept
{
    return WriteNumber(std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value, buffer, size,
                       length);
}

bool SCKZCoreCom::ConvertStringIntoNumericValue(const char* text, DWORD len, unsigned int& value) noexcept
{
    return ReadUnsigned(text, len, value);
}

bool SCKZCoreCom::ConvertStringIntoNumericValue(const char* text, DWORD len, unsigned long& value) noexcept
{
    return ReadUnsigned(text, len, value);
}

bool SCKZCoreCom::ConvertStringIntoNumericValue(const char* text, DWORD len, double& value) noexcept
{
    for (const SWordOfDouble& word : WORDS_OF_DOUBLES) {
        if (IXMLIO::IsSameText(text, len, word.text, static_cast<DWORD>(std::strlen(word.text)))) {
            value = word.value;
            return true;
        }
    }
    return SCNumeric::ReadDecimal(text, len, value);
}

bool SCKZCoreCom::ConvertNumericValueListIntoString(const std::queue<DWORD>& numbers, char separator,
                                                    char* buffer, DWORD size, DWORD& length)
{
    return ConvertNumericValueListIntoString(CopyQueue(numbers), separator, buffer, size, length);
}

bool SCKZCoreCom::ConvertNumericValueListIntoString(const std::vector<DWORD>& numbers, char separator,
                                                    char* buffer, DWORD size, DWORD& length) noexcept
{
    DWORD written = 0;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i != 0 && written < size)
            buffer[written++] = separator;
        DWORD len = 0;
        if (!WriteNumber(numbers[i], buffer + written, size - written, len))
            return false;
        written += len;
    }
    if (written == size)
        return false;
    buffer[written] = '\0';
    length = written;
    return true;
}

bool SCKZCoreCom::ConvertStringIntoNumericValueList(const char* text, DWORD len, char separator,
                                                    std::queue<DWORD>& numbers)
{
    std::vector<DWORD> read;
    if (!ConvertStringIntoNumericValueList(text, len, separator, read))
        return false;
    MakeQueue(read).swap(numbers);
    return true;
}

bool SCKZCoreCom::ConvertStringIntoNumericValueList(const char* text, DWORD len, char separator,
                                                    std::vector<DWORD>& numbers)
{
    std::vector<DWORD> read;
    if (len != 0) {
        const char* const end = text + len;
        for (const char* number = text;; ++number) {
            const char* const numberEnd = std::find(number, end, separator);
            if (!ReadUnsigned(number, static_cast<DWORD>(numberEnd - number), read.emplace_back()))
                return false;
            number = numberEnd;
            if (number == end)
                break;
        }
    }
    numbers = std::move(read);
    return true;
}

bool SCKZCoreCom::CompareStringRear(const char* text, DWORD textLen, const char* rear, DWORD rearLen) noexcept
{
    return rearLen <= textLen &&
           (rearLen == 0 || std::memcmp(text + (textLen - rearLen), rear, rearLen) == 0);
}

} // namespace NSKZ::NSKZCore
