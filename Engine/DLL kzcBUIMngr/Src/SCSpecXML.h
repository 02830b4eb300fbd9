#ifndef SCSPECXML_H
#define SCSPECXML_H

#include "CXMLReader.h"
#include "CXMLWriter.h"
#include "SCKZCoreCom.h"

#include <deque>
#include <string>
#include <vector>

namespace NSKZ::NSKZCore {

// What the elements of a saved environment have in common: attributes that are numbers, lists of numbers and
// flags, and walks over children.
//
// Names are given as the array constants they are.
class SCSpecXML
{
public:
    SCSpecXML() = delete;

    using Attributes = std::vector<IXMLIO::SAttribute>;
    using EMthRetOfReadXML = CXMLReader::EMthRetOfReadXML;

    // The attributes of an element in the making, in the order in which they are added. Texts are borrowed,
    // the texts of numbers are kept here.
    class CAttributes
    {
    public:
        const Attributes& Get() const noexcept { return attributes; }
        void Add(const IXMLIO::SAttribute& attribute) { attributes.push_back(attribute); }
        void Add(const Attributes& others)
        {
            attributes.insert(attributes.end(), others.begin(), others.end());
        }

        // `text` is followed by a NUL.
        template <std::size_t SIZE>
        void AddText(const char (&name)[SIZE], const char* text)
        {
            attributes.push_back(
                {name, SIZE - 1, text, static_cast<DWORD>(std::char_traits<char>::length(text))});
        }
        template <std::size_t SIZE>
        void AddTrue(const char (&name)[SIZE])
        {
            attributes.push_back({name, SIZE - 1, SCKZCoreCom::STR_TRUE, SCKZCoreCom::STRLEN_TRUE});
        }
        // False, with the last error ERROR_INVALID_DATA, if the number cannot be written.
        template <std::size_t SIZE>
        bool AddNumber(const char (&name)[SIZE], DWORD number)
        {
            return AddNumber(name, SIZE - 1, number);
        }
        // The numbers with commas between them.
        template <std::size_t SIZE>
        bool AddNumbers(const char (&name)[SIZE], const std::vector<DWORD>& numbers)
        {
            std::string text;
            if (!ConvertIntoText(numbers, text))
                return false;
            AddKept(name, SIZE - 1, std::move(text));
            return true;
        }
        // A text that is kept here.
        template <std::size_t SIZE>
        void AddKept(const char (&name)[SIZE], std::string text)
        {
            AddKept(name, SIZE - 1, std::move(text));
        }

    private:
        bool AddNumber(const char* name, DWORD nameLen, DWORD number);
        void AddKept(const char* name, DWORD nameLen, std::string text);

        Attributes attributes;
        std::deque<std::string> keptTexts; // each stays where it is
    };

    // The attribute of a number; its text is in `buffer`. False as above.
    static constexpr DWORD MAX_NUMBER_SIZE = 32;
    static bool MakeNumberAttribute(const char* name, DWORD nameLen, DWORD number,
                                    char (&buffer)[MAX_NUMBER_SIZE], IXMLIO::SAttribute& attribute) noexcept;
    // False as above.
    static bool ConvertIntoText(const std::vector<DWORD>& numbers, std::string& text);

    // What became of an attribute that was looked for.
    enum ETaken
    {
        TAKEN_ABSENT, // there is none of that name; the output is untouched
        TAKEN_OK,
        TAKEN_BAD, // its value is not as it should be; the output is untouched
    };
    // Take the attribute of that name out of the list: its place becomes blank. A number is decimal, of one
    // of the unsigned types; a list has commas between its numbers, and no text is no numbers.
    template <std::size_t SIZE>
    static ETaken TakeText(Attributes& attributes, const char (&name)[SIZE],
                           IXMLIO::SAttribute& taken) noexcept
    {
        return TakeText(attributes, name, SIZE - 1, taken);
    }
    template <std::size_t SIZE>
    static ETaken TakeNumber(Attributes& attributes, const char (&name)[SIZE], DWORD& number) noexcept
    {
        return TakeNumber(attributes, name, SIZE - 1, number);
    }
    template <std::size_t SIZE>
    static ETaken TakeNumbers(Attributes& attributes, const char (&name)[SIZE], std::vector<DWORD>& numbers)
    {
        return TakeNumbers(attributes, name, SIZE - 1, numbers);
    }
    template <std::size_t SIZE>
    static ETaken TakeFlag(Attributes& attributes, const char (&name)[SIZE], bool& flag) noexcept
    {
        return TakeFlag(attributes, name, SIZE - 1, flag);
    }
    // An identifier: true if it is there, a number and not 0.
    template <std::size_t SIZE>
    static bool TakeID(Attributes& attributes, const char (&name)[SIZE], DWORD& id) noexcept
    {
        DWORD found = 0;
        if (TakeNumber(attributes, name, SIZE - 1, found) != TAKEN_OK || found == 0)
            return false;
        id = found;
        return true;
    }
    // The same without taking it.
    template <std::size_t SIZE>
    static bool GetID(const Attributes& attributes, const char (&name)[SIZE], DWORD& id) noexcept
    {
        return GetID(attributes, name, SIZE - 1, id);
    }

    // Whether the reader is on an element of that name.
    template <std::size_t SIZE>
    static bool IsOnElement(const CXMLReader& reader, const char (&name)[SIZE]) noexcept
    {
        return IsOnElement(reader, name, SIZE - 1);
    }

    // Calls read() for the element that the reader is on and for each of its later siblings. What read gives
    // decides: READXML_OK, READXML_BADFORMAT and READXML_UNKNOWNELEMENT let the walk go on,
    // READXML_NESTEDFAILURE ends it with READXML_FAILURE, and everything else ends it with itself. At the end
    // of the siblings READXML_OK, with the reader behind their parent; READXML_FAILURE if the document ends
    // before. Read leaves the reader on the level of the element it was called for.
    template <class TRead>
    static EMthRetOfReadXML ReadSiblings(CXMLReader& reader, const TRead& read)
    {
        for (;;) {
            const EMthRetOfReadXML result = read();
            if (result == CXMLReader::READXML_NESTEDFAILURE)
                return CXMLReader::READXML_FAILURE;
            if (result != CXMLReader::READXML_OK && result != CXMLReader::READXML_BADFORMAT &&
                result != CXMLReader::READXML_UNKNOWNELEMENT)
                return result;
            const EMthRetOfReadXML sought = reader.SeekToStartTagOfNextSiblingElement();
            if (sought == CXMLReader::READXML_NOTEXIST)
                return CXMLReader::READXML_OK;
            if (sought != CXMLReader::READXML_OK)
                return sought == CXMLReader::READXML_SEEKFAILURE ? CXMLReader::READXML_FAILURE : sought;
        }
    }
    // The same for the children of the element that the reader is on; `ifNone` where it has none.
    template <class TRead>
    static EMthRetOfReadXML ReadChildren(CXMLReader& reader, EMthRetOfReadXML ifNone, const TRead& read)
    {
        const EMthRetOfReadXML sought = reader.SeekToStartTagOfFirstChildElement();
        if (sought == CXMLReader::READXML_NOTEXIST)
            return ifNone;
        return sought == CXMLReader::READXML_OK ? ReadSiblings(reader, read) : sought;
    }

private:
    static bool GetID(const Attributes& attributes, const char* name, DWORD nameLen, DWORD& id) noexcept;
    static ETaken TakeText(Attributes& attributes, const char* name, DWORD nameLen,
                           IXMLIO::SAttribute& taken) noexcept;
    static ETaken TakeNumber(Attributes& attributes, const char* name, DWORD nameLen, DWORD& number) noexcept;
    static ETaken TakeNumbers(Attributes& attributes, const char* name, DWORD nameLen,
                              std::vector<DWORD>& numbers);
    static ETaken TakeFlag(Attributes& attributes, const char* name, DWORD nameLen, bool& flag) noexcept;
    static bool IsOnElement(const CXMLReader& reader, const char* name, DWORD nameLen) noexcept;
};

} // namespace NSKZ::NSKZCore

#endif
