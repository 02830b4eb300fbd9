#ifndef TESTTABLE_H
#define TESTTABLE_H

#include "Support/TestText.h"

#include <string>

namespace NSKZ::Test {

// Seven records with an empty cell in each item but the first.
inline const std::string TABLE_TEXT = "region,shop,amount,day,at\n"
                                      "East,A,10,2024-01-05,09:30\n"  // 0
                                      "East,B,20,2024-01-06,10:15\n"  // 1
                                      "West,A,-5,2024-01-05,09:30\n"  // 2
                                      "West,C,,2024-01-07,\n"         // 3
                                      "North,B,7,,11:00\n"            // 4
                                      "North,,2.5,2024-01-08,12:45\n" // 5
                                      "East,A,4,2024-01-06,09:30\n";  // 6

inline const std::u8string JAPANESE_TEXT = u8"地域,商品,金額\n"
                                           u8"関東,緑茶,100\n"
                                           u8"関西,海苔,250\n"
                                           u8"関東,ソース 大,30\n"
                                           u8"九州,,40\n";

} // namespace NSKZ::Test

#endif
