// The fixed form of an environment. The first byte of the input tells what is around it, the rest is the
// document:
//
//     1  the records are limited
//     2  the environment has no sums
//     4  it has no link tables
//
// It is read over the common form of a good save, and over what came of the input before. Whatever comes of
// it, the environment can be used. If a form with classes was taken, what is written of it is taken too, and
// written again the same.

#include "CSpecFuzz.h"
#include "SpecMutator.h"

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const CSpecFuzz fuzz;
    static SSampleEnv withTables(false);
    static SSampleEnv withoutTables(false);
    static const bool areRead = [] {
        return fuzz.ReadCommon(withTables.env, fuzz.GetCommonForm(), fuzz.GetFolder(),
                               SSampleEnv::REC_COUNT) == CXMLReader::READXML_OK &&
               fuzz.ReadCommon(withoutTables.env, fuzz.GetCommonForm(), fuzz.GetFolder() + "nowhere\\",
                               SSampleEnv::REC_COUNT) == CXMLReader::READXML_OK;
    }();
    Require(areRead, "the common form of a good save is read");
    if (size == 0)
        return 0;
    const unsigned int flags = data[0];
    const std::string_view document(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::vector<DWORD> limited = (flags & 1) != 0 ? std::vector<DWORD>{0, 2, 3} : std::vector<DWORD>{};
    SSampleEnv& sample = (flags & 4) != 0 ? withoutTables : withTables;
    CBUIDataMngr& env = sample.env;
    env.SetCoreSumMngrPtr((flags & 2) != 0 ? nullptr : &sample.sums);

    const auto result = fuzz.ReadFixed(env, document, limited);
    if (result == CXMLReader::READXML_OK && CSpecFuzz::HasBtnClass(env)) {
        const std::string written = fuzz.WriteFixed(env);
        Require(fuzz.ReadFixed(env, written, limited) == CXMLReader::READXML_OK, "what was written is read");
        Require(fuzz.WriteFixed(env) == written, "what was written twice is the same");
    }
    CEnvUse use(env);
    use.Ask();
    use.Press({CSpecFuzz::ChooseMode(size)});
    use.Change(false);
    fuzz.WriteFixed(env);
    env.ClearOfFixedSpec();
    return 0;
}
