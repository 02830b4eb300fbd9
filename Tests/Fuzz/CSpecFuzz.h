#ifndef CSPECFUZZ_H
#define CSPECFUZZ_H

#include "FuzzTarget.h"

#include "Support/CTempDir.h"
#include "Support/EnvUse.h"
#include "Support/SpecSample.h"
#include "Support/XMLText.h"

#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace NSKZ::Test {

// The saved forms of environments in files, which targets write and read all the time.
class CSpecFuzz
{
public:
    using CBUIDataMngr = NSKZCore::CBUIDataMngr;
    using CXMLReader = NSKZCore::CXMLReader;

    // Has the link tables and both forms of a sample.
    CSpecFuzz()
    {
        SSampleEnv sample(true);
        AddSpecialBtns(sample.env);
        commonForm = WriteCommon(sample.env, true);
        fixedForm = WriteFixed(sample.env);
    }

    // One of the modes for each input.
    static CBUIDataMngr::ERelationMode ChooseMode(std::size_t size)
    {
        constexpr CBUIDataMngr::ERelationMode MODES[] = {
            CBUIDataMngr::RELATIONMODE_NONE, CBUIDataMngr::RELATIONMODE_OR, CBUIDataMngr::RELATIONMODE_AND,
            CBUIDataMngr::RELATIONMODE_DIFFERENCE, CBUIDataMngr::RELATIONMODE_NARROWING};
        return MODES[size % std::size(MODES)];
    }

    // Without one a form is written that has nothing to be read.
    static bool HasBtnClass(const CBUIDataMngr& env)
    {
        std::vector<DWORD> btnClassIDs;
        env.GetAllBtnClassIDList(btnClassIDs, false);
        return !btnClassIDs.empty();
    }

    std::string GetFolder() const { return dir.GetPath().string() + "\\"; }
    const std::string& GetCommonForm() const { return commonForm; }
    const std::string& GetFixedForm() const { return fixedForm; }

    CXMLReader::EMthRetOfReadXML ReadCommon(CBUIDataMngr& env, std::string_view text,
                                            const std::string& folder, DWORD recCount) const
    {
        CXMLReader reader(dir.WriteFile("read.xml", text).c_str());
        return env.ReadCommonSpecByXML(folder.c_str(), reader, recCount);
    }
    CXMLReader::EMthRetOfReadXML ReadFixed(CBUIDataMngr& env, std::string_view text,
                                           const std::vector<DWORD>& limited = {}) const
    {
        CXMLReader reader(dir.WriteFile("read.xml", text).c_str());
        return env.ReadFixedSpecByXML(reader, limited.data(), static_cast<DWORD>(limited.size()));
    }
    std::string WriteCommon(const CBUIDataMngr& env, bool withData = false) const
    {
        const std::string path = (dir.GetPath() / "written.xml").string();
        NSKZCore::CXMLWriter writer(path.c_str());
        Require(env.WriteCommonSpecByXML(GetFolder().c_str(), writer, withData) && writer.Close(),
                "the common form is written");
        return ReadWholeFile(path);
    }
    std::string WriteFixed(const CBUIDataMngr& env) const
    {
        const std::string path = (dir.GetPath() / "written.xml").string();
        NSKZCore::CXMLWriter writer(path.c_str());
        Require(env.WriteFixedSpecByXML(writer) && writer.Close(), "the fixed form is written");
        return ReadWholeFile(path);
    }

private:
    CTempDir dir;
    std::string commonForm;
    std::string fixedForm;
};

} // namespace NSKZ::Test

#endif
