// The documents the service serves as they are: its OpenAPI 3.1 document and the JSON Schemas
// of the tool's objects that its answers are.
#ifndef QUORVVALIDA_TOOLS_SERVIR_DOCUMENTOS_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_DOCUMENTOS_HPP_

#include <optional>
#include <string_view>

namespace quorv::servico {

// GET /openapi.json.
std::string_view DescricaoOpenApi();

// GET /esquemas/NOME: the schema file of that name ("validacao.schema.json"...), if there is one.
std::optional<std::string_view> Esquema(std::string_view nome);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_DOCUMENTOS_HPP_
