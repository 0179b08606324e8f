#include "catalogue/metadata_store.h"

#include <keld-transl/model/pool.h>

#include <algorithm>
#include <stdexcept>

namespace keld {

using transl_tk::Attribute;
using transl_tk::Pool;

void MetadataStore::connect(std::string const & database, int const & patience, int const &,
                            int const &, transl_tk::deckAction const & action)
{
    auto const access =
        action == CatalogueForWriting ? Catalogue::Access::Write : Catalogue::Access::Read;
    m_Catalogue =
        std::make_unique<Catalogue>(database, access, std::chrono::milliseconds(patience));
}

void MetadataStore::disconnect()
{
    m_Catalogue.reset();
}

void MetadataStore::storeNEUTRAL(std::string const & path, int const &)
{
    m_Path = path;
}

void MetadataStore::storeVORN(std::string const & translator, int const &)
{
    m_Translator = translator;
}

void MetadataStore::storeData()
{
    if (m_Catalogue == nullptr)
        throw std::runtime_error("No catalogue is open.");
    m_Catalogue->store(m_Path, m_Translator, content());
}

void MetadataStore::addMetadata()
{
    auto const & attributes = Pool::getInstance()->currentSubPool()->m_Attributes;
    auto const found =
        std::find_if(attributes.begin(), attributes.end(), [](Attribute const * attribute) {
            return attribute->getType() == Attribute::Dictionary;
        });
    if (found == attributes.end())
        throw std::runtime_error("the translator handed over no metadata.");
    if (!isDictionary(*found))
        throw std::runtime_error(
            "what the translator handed over as metadata does not have the layout of metadata.");
    deserialize(*found);
}

Metadata MetadataStore::content()
{
    // Its attribute is how a dictionary tells all that it holds.
    serialize();
    Attribute * const attribute = Pool::getInstance()->currentSubPool()->m_Attributes.back();
    Metadata metadata = readMetadata(attribute).value();
    Attribute::destruct(attribute);
    return metadata;
}

} // namespace keld
