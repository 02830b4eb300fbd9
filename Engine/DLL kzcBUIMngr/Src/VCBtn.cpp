#include "VCBtn.h"

#include <cstring>

namespace NSKZ::NSKZCore {

namespace {

bool AreEqualTexts(const char* left, const char* right)
{
    return _mbscmp(reinterpret_cast<const unsigned char*>(left),
                   reinterpret_cast<const unsigned char*>(right)) == 0;
}

} // namespace

VCBtn::VCBtn(DWORD btnID, const char* nameOfBtn) : name(DuplicateText(nameOfBtn)), id(btnID) {}

VCBtn::~VCBtn() = default;

void VCBtn::Clear()
{
    alias.reset();
    name.reset();
    backReferences.reset();
    id = SCBUICoreCom::BTN_ID_UNSETTING;
    visibleInfo = 0;
    aliasIsName = true;
    sel = false;
}

void VCBtn::Copy(const VCBtn& other)
{
    std::unique_ptr<char[]> newAlias = DuplicateText(other.alias.get());
    std::unique_ptr<char[]> newName = DuplicateText(other.name.get());
    std::unique_ptr<SBackReferences> newReferences;
    if (other.backReferences != nullptr)
        newReferences = std::make_unique<SBackReferences>(*other.backReferences);

    alias = std::move(newAlias);
    name = std::move(newName);
    backReferences = std::move(newReferences);
    id = other.id;
    visibleInfo = other.visibleInfo;
    aliasIsName = other.aliasIsName;
    sel = other.sel;
}

void VCBtn::ClearOfFixedSpec()
{
    sel = false;
    visibleInfo &= ~VISINFO_MASK_FIXEDSPEC;
    if (backReferences == nullptr)
        return;
    backReferences->spBtnIDsInClass.clear();
    backReferences->spBtnIDsOfOtherClass.EraseIf(
        [](const SBtnClassIDAndBtnID& spBtn) { return SCBUICoreCom::IsFixedVirBtnClass(spBtn.btnClassID); });
    if (!HasBackReferences())
        backReferences.reset();
}

VCBtn::SAlias VCBtn::MakeAlias(const char* text) const
{
    if (text != nullptr && name != nullptr && AreEqualTexts(text, name.get()))
        return SAlias{nullptr, true};
    return SAlias{DuplicateText(text == nullptr ? "" : text), false};
}

void VCBtn::SetAlias(SAlias&& made) noexcept
{
    alias = std::move(made.text);
    aliasIsName = made.isName;
}

std::unique_ptr<char[]> VCBtn::DuplicateText(const char* text)
{
    if (text == nullptr)
        return nullptr;
    const std::size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::memcpy(copy.get(), text, size);
    return copy;
}

} // namespace NSKZ::NSKZCore
