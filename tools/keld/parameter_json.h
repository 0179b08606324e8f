#ifndef KELD_TOOLS_PARAMETER_JSON_H
#define KELD_TOOLS_PARAMETER_JSON_H

#include "json_output.h"

#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/model/base.h>

#include <nlohmann/json.hpp>

namespace keld {

/// Type and content of a value; nulls for one that is not there.
nlohmann::ordered_json valueJson(transl_tk::IValue * value);

/// All values of an `Attribute` or a `Parameter`.
template <class Holder> nlohmann::ordered_json valuesJson(Holder & holder)
{
    nlohmann::ordered_json values = nlohmann::ordered_json::array();
    for (int i = 0; i < holder.getNumValues(); ++i)
        values.push_back(valueJson(holder.getValue(i)));
    return values;
}

/// Callback that appends kind and id of an entity to the array that `user` is.
bool appendEntity(transl_tk::Base * entity, void * user);

/// Adds the tree's top nodes and all its nodes, flat, to `object`. False, and nothing is added,
/// when it has none.
bool addParameterTree(transl_tk::NodeTree & tree, nlohmann::ordered_json & object);

} // namespace keld

#endif
