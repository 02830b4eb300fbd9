#ifndef CBENCHTABLE_H
#define CBENCHTABLE_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

// The table of the benchmarks: `rowCount` records of eight text fields with 2, 10, 50, 200, 1000, 10000,
// 100000 and rowCount distinct values, and one number field. Field i is named "f" and its position from 0,
// its values are a letter of its own and a number; the number field is "amount". The same row count always
// gives the same table.
class CBenchTable
{
public:
    static constexpr std::size_t TEXT_FLD_COUNT = 8;

    explicit CBenchTable(std::uint32_t rowCount);

    std::uint32_t GetRowCount() const noexcept { return rowCount; }
    // How many distinct values a text field may have; with few rows some do not occur.
    std::uint32_t GetDistinctCount(std::size_t fld) const noexcept { return distinctCounts[fld]; }

    // The whole table as CSV with a header line.
    std::string MakeCSV() const;

private:
    std::uint32_t rowCount;
    std::array<std::uint32_t, TEXT_FLD_COUNT> distinctCounts;
};

#endif
