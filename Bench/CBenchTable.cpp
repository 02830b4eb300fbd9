#include "CBenchTable.h"

#include <charconv>
#include <numeric>
#include <random>
#include <vector>

CBenchTable::CBenchTable(std::uint32_t rows)
    : rowCount(rows), distinctCounts{2, 10, 50, 200, 1000, 10000, 100000, rows}
{}

std::string CBenchTable::MakeCSV() const
{
    std::mt19937 generator(20240229);
    const auto random = [&generator] { return static_cast<std::uint32_t>(generator()); };
    std::vector<std::uint32_t> ownValues(rowCount); // the last field: every record a value of its own
    std::iota(ownValues.begin(), ownValues.end(), 0U);
    for (std::uint32_t i = rowCount; i > 1; --i)
        std::swap(ownValues[i - 1], ownValues[random() % i]);

    std::string csv;
    csv.reserve(std::size_t{rowCount} * 68);
    for (std::size_t fld = 0; fld < TEXT_FLD_COUNT; ++fld)
        csv.append("f").append(std::to_string(fld)).append(",");
    csv.append("amount\n");
    std::array<char, 16> digits;
    const auto append = [&](std::uint32_t number) {
        csv.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
    };
    for (std::uint32_t row = 0; row < rowCount; ++row) {
        for (std::size_t fld = 0; fld < TEXT_FLD_COUNT; ++fld) {
            csv.push_back(static_cast<char>('A' + fld));
            append(100000 + (fld + 1 == TEXT_FLD_COUNT ? ownValues[row] : random() % distinctCounts[fld]));
            csv.push_back(',');
        }
        append(random() % 10000);
        csv.push_back('.');
        append(random() % 100);
        csv.push_back('\n');
    }
    return csv;
}
