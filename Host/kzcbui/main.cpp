#include "CHostProgram.h"

#if defined(KZC_SANITIZED)
// The line editor does not free the names of the functions that it was given.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:wcsdup";
}
#endif

int main(int argc, char** argv)
{
    return NSKZ::Host::CHostProgram::Run(argc, argv);
}
