// The API's OpenAPI 3.1 description, as GET /openapi.json serves it.
#ifndef QUORVVALIDA_TOOLS_SERVIR_OPENAPI_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_OPENAPI_HPP_

namespace quorv::servico {

const char* DescricaoOpenApi();

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_OPENAPI_HPP_
