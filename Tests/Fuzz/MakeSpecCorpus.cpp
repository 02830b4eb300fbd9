// Writes the seeds of the fuzz targets of saved forms, as environments write them:
//
//     make_spec_corpus [--check] DIRECTORY        the directory is Tests/Fuzz/Corpus
//
// With --check nothing is written: the program fails where a seed is missing or is not what would be
// written. It is a test; after a change of the forms the seeds are to be written anew.

#include "CSeedFiles.h"
#include "CSpecFuzz.h"

using namespace NSKZ::NSKZCore;
using namespace NSKZ::Test;

namespace {

void AddCommonForms(const CSeedFiles& seeds, const CSpecFuzz& fuzz)
{
    const std::string form = WithoutMoments(fuzz.GetCommonForm());
    seeds.Write("common_spec", "all_kinds", "@" + form);
    seeds.Write("common_spec", "without_tables", "A" + form);
    seeds.Write("common_spec", "in_place_of_another", "B" + form);
    seeds.Write("common_spec", "of_another_count_of_records", "D" + form);
    seeds.Write("common_spec", "with_the_fixed_form", "H" + form);
    const SSampleEnv plain(true);
    seeds.Write("common_spec", "plain_items", "@" + fuzz.WriteCommon(plain.env));
}

void AddFixedForms(const CSeedFiles& seeds, const CSpecFuzz& fuzz)
{
    SSampleEnv sample(true);
    CBUIDataMngr& env = sample.env;
    const auto add = [&](const char* name, const char* flags) {
        seeds.Write("fixed_spec", name, flags + WithoutMoments(fuzz.WriteFixed(env)));
    };
    add("plain_items", "@");
    AddSpecialBtns(env);
    add("all_kinds", "@");
    add("without_tables", "D");
    env.SetMultiSelectionInfo(true);
    env.SelectBtns(1, {2, 3}, true, false);
    env.SelectTheBtn(3, 2, true);
    add("narrowing", "@");
    add("narrowing_within_a_limitation", "A");
    add("narrowing_without_sums", "B");
    env.SelectAllBtnsOfBtnClass(2, true);
    add("all_of_an_item", "@");
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_OR);
    env.SelectBtns(1, {2}, true, false);
    add("or", "@");
    env.SetRelationMode(CBUIDataMngr::RELATIONMODE_DIFFERENCE);
    env.SelectBtns(1, {2, 3}, true, false);
    add("difference", "@");
}

} // namespace

int main(int argc, char** argv)
{
    const CSpecFuzz fuzz;
    return CSeedFiles::Run(argc, argv, [&fuzz](const CSeedFiles& seeds) {
        AddCommonForms(seeds, fuzz);
        AddFixedForms(seeds, fuzz);
    });
}
