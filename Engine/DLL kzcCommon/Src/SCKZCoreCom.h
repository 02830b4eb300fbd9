#ifndef SCKZCORECOM_H
#define SCKZCORECOM_H

#include "IXMLIO.h"
#include "KzcCommonAPI.h"

#include <queue>
#include <vector>

namespace NSKZ::NSKZCore {

// What all libraries share: merges of record lists, numbers as text, characters with a name.
class KZCCOMMON_API SCKZCoreCom
{
public:
    SCKZCoreCom() = delete;

    static constexpr char CHAR_SPACE = ' ';
    static constexpr char CHAR_COMMA = ',';
    static constexpr char CHAR_YEN =
        '\\'; // the separator of paths, whose code is a yen sign in Japanese fonts

    // The minus sign and the mark of a long vowel, full width and half width, in code page 932. The two of a
    // row have the same length there.
    static constexpr char STR_EM_MINUS[] = "\x81\x7C";
    static constexpr char STR_EM_MACRON[] = "\x81\x5B";
    static constexpr DWORD STRLEN_EM_MACRON = sizeof STR_EM_MACRON - 1;
    static constexpr char STR_EN_MINUS[] = "-";
    static constexpr char STR_EN_MACRON[] = "\xB0";
    static constexpr DWORD STRLEN_EN_MACRON = sizeof STR_EN_MACRON - 1;

    // Whether the `textLen` bytes at `text` end in the `rearLen` bytes at `rear`, byte by byte. Linear in the
    // latter.
    static bool CompareStringRear(const char* text, DWORD textLen, const char* rear, DWORD rearLen) noexcept;

    // Whether the `pathLen` bytes at `path`, in the host's code page, are the path of a directory: whether
    // they end in a separator, `\` or `/`, that is a character and not the second byte of one. The name of a
    // file can be put behind such a path. Nothing is looked for on disk. Linear in the length.
    static bool IsDirectoryPath(const char* path, DWORD pathLen) noexcept;

    // The extension of binary files.
    static constexpr char STR_EXTENSION_DAT[] = ".dat";
    static constexpr DWORD STRLEN_EXTENSION_DAT = sizeof STR_EXTENSION_DAT - 1;

    // In which order the bytes of a number stand in memory, and so in binary files.
    enum EEndianness : DWORD
    {
        ENDIANNESS_LITTLE = 1, // the lowest byte first
        ENDIANNESS_BIG = 2,
    };
    // How long int, long and a pointer are, in bits.
    enum EDataModel : DWORD
    {
        DATAMODEL_ILP32 = 1, // 32, 32, 32
        DATAMODEL_LLP64 = 2, // 32, 32, 64
        DATAMODEL_LP64 = 3,  // 32, 64, 64
    };

    // Those of the program that runs.
    static EEndianness GetEndiannessOfPresentEnvironment() noexcept;
    static EDataModel GetDataModelOfPresentEnvironment() noexcept;

    // The word of a value, a constant, and its length. False, with both untouched, for what is no value.
    static bool GetEndiannessStr(EEndianness endianness, const char*& text, DWORD& textLen) noexcept;
    static bool GetDataModelStr(EDataModel dataModel, const char*& text, DWORD& textLen) noexcept;
    // The value of a word. False, with the value untouched, for every other text.
    static bool GetEndianness(const char* text, DWORD textLen, EEndianness& endianness) noexcept;
    static bool GetDataModel(const char* text, DWORD textLen, EDataModel& dataModel) noexcept;

    // Attributes by which XML points to binary files: what the files were written by, and where they are.
    static constexpr char STR_ATTRNAME_ENDIANNESS[] = "endianness";
    static constexpr DWORD STRLEN_ATTRNAME_ENDIANNESS = sizeof STR_ATTRNAME_ENDIANNESS - 1;
    static constexpr char STR_ATTRVALUE_ENDIANNESS_LITTLE[] = "LittleEndian";
    static constexpr DWORD STRLEN_ATTRVALUE_ENDIANNESS_LITTLE = sizeof STR_ATTRVALUE_ENDIANNESS_LITTLE - 1;
    static constexpr char STR_ATTRVALUE_ENDIANNESS_BIG[] = "BigEndian";
    static constexpr DWORD STRLEN_ATTRVALUE_ENDIANNESS_BIG = sizeof STR_ATTRVALUE_ENDIANNESS_BIG - 1;
    static constexpr char STR_ATTRNAME_DATAMODEL[] = "dataModel";
    static constexpr DWORD STRLEN_ATTRNAME_DATAMODEL = sizeof STR_ATTRNAME_DATAMODEL - 1;
    static constexpr char STR_ATTRVALUE_DATAMODEL_ILP32[] = "ILP32";
    static constexpr DWORD STRLEN_ATTRVALUE_DATAMODEL_ILP32 = sizeof STR_ATTRVALUE_DATAMODEL_ILP32 - 1;
    static constexpr char STR_ATTRVALUE_DATAMODEL_LLP64[] = "LLP64";
    static constexpr DWORD STRLEN_ATTRVALUE_DATAMODEL_LLP64 = sizeof STR_ATTRVALUE_DATAMODEL_LLP64 - 1;
    static constexpr char STR_ATTRVALUE_DATAMODEL_LP64[] = "LP64";
    static constexpr DWORD STRLEN_ATTRVALUE_DATAMODEL_LP64 = sizeof STR_ATTRVALUE_DATAMODEL_LP64 - 1;
    static constexpr char STR_ATTRNAME_XLINK_TYPE[] = "xlink:type";
    static constexpr DWORD STRLEN_ATTRNAME_XLINK_TYPE = sizeof STR_ATTRNAME_XLINK_TYPE - 1;
    static constexpr char STR_ATTRVALUE_XLINK_TYPE_SIMPLE[] = "simple";
    static constexpr DWORD STRLEN_ATTRVALUE_XLINK_TYPE_SIMPLE = sizeof STR_ATTRVALUE_XLINK_TYPE_SIMPLE - 1;
    static constexpr char STR_ATTRNAME_XLINK_HREF[] = "xlink:href";
    static constexpr DWORD STRLEN_ATTRNAME_XLINK_HREF = sizeof STR_ATTRNAME_XLINK_HREF - 1;

    // The two parts of what is saved of an environment.
    enum ESpecType : DWORD
    {
        SPECTYPE_COMMON = 1, // what follows from the source data
        SPECTYPE_FIXED = 2,  // what a user has decided
    };

    // How conditions are joined. It is saved by its word; a value that is none of these joins as OR does.
    enum EBoolOperator : DWORD
    {
        BOOLOPERATOR_AND = 1,
        BOOLOPERATOR_OR = 2,
    };

    // How two values are compared: "left operator right".
    enum ECmpOperator : DWORD
    {
        CMPOPERATOR_EQUAL = 1,
        CMPOPERATOR_NOTEQUAL = 2,
        CMPOPERATOR_LESS = 3,
        CMPOPERATOR_LESSEQUAL = 4,
        CMPOPERATOR_GREATER = 5,
        CMPOPERATOR_GREATEREQUAL = 6,
    };

    // The two values of a boolean attribute in XML.
    static constexpr char STR_TRUE[] = "true";
    static constexpr DWORD STRLEN_TRUE = sizeof STR_TRUE - 1;
    static constexpr char STR_FALSE[] = "false";
    static constexpr DWORD STRLEN_FALSE = sizeof STR_FALSE - 1;

    // The attribute of a boolean operator in XML, and its words.
    static constexpr char STR_ATTRNAME_BOOLOPERATOR[] = "boolOperator";
    static constexpr DWORD STRLEN_ATTRNAME_BOOLOPERATOR = sizeof STR_ATTRNAME_BOOLOPERATOR - 1;
    static constexpr char STR_ATTRVALUE_BOOLOPERATOR_AND[] = "And";
    static constexpr DWORD STRLEN_ATTRVALUE_BOOLOPERATOR_AND = sizeof STR_ATTRVALUE_BOOLOPERATOR_AND - 1;
    static constexpr char STR_ATTRVALUE_BOOLOPERATOR_OR[] = "Or";
    static constexpr DWORD STRLEN_ATTRVALUE_BOOLOPERATOR_OR = sizeof STR_ATTRVALUE_BOOLOPERATOR_OR - 1;

    // Makes `attribute` that of the operator. Its texts are constants.
    static void GetBoolOperatorAttribute(EBoolOperator boolOperator, IXMLIO::SAttribute& attribute) noexcept;

    // Record lists are ascending and hold no number twice; nothing checks it. A list may be null where its
    // count is 0.

    // Keeps in `list` the numbers that stand in `other` too, in order; sets `count` to their number and
    // returns it. Cost: linear in the longer list, and logarithmic in it for each number of a much shorter
    // one.
    static DWORD MergeRecListByANDCnd(DWORD* list, DWORD& count, const DWORD* other,
                                      DWORD otherCount) noexcept;

    // Writes the union of `a` and `b` to `out`, a number in both once, and returns its count. `out` overlaps
    // neither list. It has room for aCount + bCount numbers, or for the union where the caller knows its
    // bound: nothing is written behind the last number of the union. Linear.
    static DWORD MergeRecListByORCnd(const DWORD* a, DWORD aCount, const DWORD* b, DWORD bCount,
                                     DWORD* out) noexcept;

    // Queues of numbers: one is emptied, or put in ascending order. Equal numbers all stay. Sorting throws
    // std::bad_alloc with the queue unchanged.
    static void ClearQueueContainer(std::queue<DWORD>& numbers) noexcept;
    static void SortQueueContainer(std::queue<DWORD>& numbers);

    // Write a number as decimal text with a NUL behind it to `buffer`, which has `size` bytes; `length`
    // becomes the bytes of the text without the NUL. False, with both untouched, if it does not fit. A double
    // is written in the shortest text that reads back as the same double, with a point whatever the locale;
    // an infinity is "inf" or "-inf", and NaN, of either sign, "nan". A DWORD is one of the unsigned types.
    static bool ConvertNumericValueIntoString(int value, char* buffer, DWORD size, DWORD& length) noexcept;
    static bool ConvertNumericValueIntoString(unsigned int value, char* buffer, DWORD size,
                                              DWORD& length) noexcept;
    static bool ConvertNumericValueIntoString(unsigned long value, char* buffer, DWORD size,
                                              DWORD& length) noexcept;
    static bool ConvertNumericValueIntoString(double value, char* buffer, DWORD size, DWORD& length) noexcept;

    // The reverse: the whole of `len` bytes is the text of a number, without blanks or a plus sign; an
    // unsigned one has digits alone. False, with `value` untouched, for every other text (no text among them)
    // and for a number that the type cannot hold. A double too small for the type reads as 0; "inf", "-inf"
    // and "nan" in exactly this spelling read as what they say.
    static bool ConvertStringIntoNumericValue(const char* text, DWORD len, unsigned int& value) noexcept;
    static bool ConvertStringIntoNumericValue(const char* text, DWORD len, unsigned long& value) noexcept;
    static bool ConvertStringIntoNumericValue(const char* text, DWORD len, double& value) noexcept;

    // Lists as text: the numbers in decimal with `separator`, which is no digit, between them. An empty list
    // is the empty text. Writing puts a NUL behind the text, and `length` becomes its bytes without the NUL;
    // 11 bytes a number and one more are always enough. It is false, with `length` untouched and what stands
    // in `buffer` of no use, if the text does not fit. Writing a queue copies it first and may throw
    // std::bad_alloc. Reading is false, with the list untouched, for a text in which anything else stands, an
    // empty place among them; else its numbers take the place of what the list held. It throws std::bad_alloc
    // with the list unchanged.
    static bool ConvertNumericValueListIntoString(const std::queue<DWORD>& numbers, char separator,
                                                  char* buffer, DWORD size, DWORD& length);
    static bool ConvertNumericValueListIntoString(const std::vector<DWORD>& numbers, char separator,
                                                  char* buffer, DWORD size, DWORD& length) noexcept;
    static bool ConvertStringIntoNumericValueList(const char* text, DWORD len, char separator,
                                                  std::queue<DWORD>& numbers);
    static bool ConvertStringIntoNumericValueList(const char* text, DWORD len, char separator,
                                                  std::vector<DWORD>& numbers);
};

} // namespace NSKZ::NSKZCore

#endif
