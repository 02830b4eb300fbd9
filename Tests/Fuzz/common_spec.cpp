// The common form of an environment. The first byte of the input tells what is around it, the rest is the
// document:
//
//     1  the link tables are not there
//     2  it is read over an environment that has been in use
//     4  the source table has another count of records
//     8  the fixed form of a good save is read behind it
//
// Whatever comes of it, the environment can be used. If a form with classes was taken, what is written of it
// is taken too, and written again the same.

#include "CSpecFuzz.h"
#include "SpecMutator.h"

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CSpecFuzz fuzz;
    if (size == 0)
        return 0;
    const unsigned int flags = data[0];
    const std::string_view document(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string folder = (flags & 1) != 0 ? fuzz.GetFolder() + "nowhere\\" : fuzz.GetFolder();
    const DWORD recCount = (flags & 4) != 0 ? SSampleEnv::REC_COUNT + 1 : SSampleEnv::REC_COUNT;

    SSampleEnv sample((flags & 2) != 0);
    CBUIDataMngr& env = sample.env;
    if ((flags & 2) != 0)
        AddSpecialBtns(env);
    const auto result = fuzz.ReadCommon(env, document, folder, recCount);
    if (result == CXMLReader::READXML_OK && CSpecFuzz::HasBtnClass(env)) {
        const std::string written = fuzz.WriteCommon(env);
        SSampleEnv second(false);
        Require(fuzz.ReadCommon(second.env, written, folder, recCount) == CXMLReader::READXML_OK,
                "what was written is read");
        Require(fuzz.WriteCommon(second.env) == written, "what was written twice is the same");
    }
    if ((flags & 8) != 0)
        fuzz.ReadFixed(env, fuzz.GetFixedForm());
    CEnvUse use(env);
    use.Ask();
    use.Press({CSpecFuzz::ChooseMode(size)});
    use.Change(true);
    fuzz.WriteCommon(env);
    fuzz.WriteFixed(env);
    env.ClearOfFixedSpec();
    return 0;
}
