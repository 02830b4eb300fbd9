#ifndef CHOSTOPTIONS_H
#define CHOSTOPTIONS_H

#include "SCBUICoreCom.h"
#include "SCFldType.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace NSKZ::Host {

// What the program was called with.
class CHostOptions
{
public:
    static constexpr int CODEPAGE_AUTO = 0;

    // Reads the program's arguments. Without a value the text in `answer` is to be written to standard output
    // and the program to end well (--help, --version). Throws ECHostError with EXITSTATUS_WRONG_USAGE, also
    // for link tables that the engine does not have.
    static std::optional<CHostOptions> Read(int argc, const char* const* argv, std::string& answer);

    // The character of --delimiter; false, with `delimiter` untouched, for what is none.
    static constexpr const char* EXPECTED_DELIMITER =
        "one ASCII character other than the double quote and line ends, or tab";
    static bool ReadDelimiter(const std::string& text, char& delimiter) noexcept;
    // The field and the type of --type FIELD=TYPE; false where the text is none.
    static constexpr const char* EXPECTED_TYPE =
        "text, number, date[:ORDER-DELIMITER] (as date:ymd-slash) or time[:FORM] (as time:hm)";
    static bool ReadType(const std::string& text,
                         std::pair<std::string, NSKZCore::SCFldType::SFldType>& type);

    std::string tablePath; // as the system names files
    int codePage = CODEPAGE_AUTO;
    char delimiter = ',';
    bool hasHeader = true;
    std::vector<std::pair<std::string, NSKZCore::SCFldType::SFldType>> types; // by field name in UTF-8
    NSKZCore::SCBUICoreCom::ELinkTableVerType linkTables = NSKZCore::SCBUICoreCom::LINKTBLVERTYPE_ONMEM;
    bool json = false;
    bool echo = false;
    bool showsProgress = true;
    std::optional<std::string> scriptPath; // "-" for standard input
    std::vector<std::string> commands;
};

} // namespace NSKZ::Host

#endif
