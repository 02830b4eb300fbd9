#include "CHostProgram.h"

int main(int argc, char** argv)
{
    return NSKZ::Host::CHostProgram::Run(argc, argv);
}
