#ifndef CCOMPLETER_H
#define CCOMPLETER_H

#include "KzcPlatform.h"

#include <string>
#include <vector>

namespace NSKZ::Host {

class CCommandSet;
class CWorkspace;

// What may stand at the end of a command line: a command, an option of it, an item, a displayed button.
class CCompleter
{
public:
    // Both borrowed.
    CCompleter(const CWorkspace& workspace, const CCommandSet& commands);

    // The words that may stand in the place of the last word of `line`, written as they must be there, in
    // quotes if it begins with one; `wordBegin` becomes the position at which it begins. Empty where there is
    // nothing to offer.
    std::vector<std::string> GetWords(const std::string& line, std::size_t& wordBegin) const;

private:
    enum EBtns
    {
        BTNS_DISPLAYED,
        BTNS_SPECIAL, // switched off ones too
    };

    std::vector<std::string> GetFirstWords() const;
    // For the form's word `place`; `before` are the plain words before it.
    std::vector<std::string> GetWordsOfPlace(const std::string& place, const std::vector<std::string>& before,
                                             char quote) const;
    std::vector<std::string> GetItems(bool numbersOnly, char quote) const;
    std::vector<std::string> GetBtns(const std::string& itemWord, EBtns which, char quote) const;
    std::vector<std::string> GetMembers(const std::string& itemWord, const std::string& spBtnWord,
                                        char quote) const;
    // The item whose buttons the members of a special button are, as a word; "" if the words name none.
    std::string GetItemOfMembers(const std::string& itemWord, const std::string& spBtnWord) const;
    // The names of the display forms of an item of dates or times.
    std::vector<std::string> GetForms(const std::string& itemWord) const;
    // The forms that the dates or times of a field may have in the table.
    std::vector<std::string> GetDataForms(const std::string& itemWord) const;
    std::vector<std::string> GetCopies(char quote) const;
    std::vector<std::string> WriteBtns(DWORD itemID, const std::vector<DWORD>& btnIDs, char quote) const;

    const CWorkspace& workspace;
    const CCommandSet& commands;
};

} // namespace NSKZ::Host

#endif
