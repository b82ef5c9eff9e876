// Errors as the service answers them: application/problem+json with a type, a title, the status
// and a detail, the kind of error told as the tool tells it in its "erro" objects.
#ifndef QUORVVALIDA_TOOLS_SERVIR_PROBLEMAS_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_PROBLEMAS_HPP_

#include <httplib.h>

#include <string>

namespace quorv::servico {

// Answers the problem: {"type": "urn:quorvvalida:erro:<tipo>", "title", "status", "detail",
// "tipo", "id_requisicao"}. `tipo` is one of the tool's error kinds ("uso",
// "tipo_nao_identificado", "interno"...) or one of the service's own (kTipos). With `fechar`, the
// connection is closed after the answer, because the request's body was not read to its end.
void RespondeProblema(httplib::Response& res, int status, const std::string& tipo,
                      const std::string& detalhe, bool fechar);

// The answer's body is sent and then the connection is closed.
void FechaAoResponder(httplib::Response& res);

// The kind of problem behind a status the HTTP library answers by itself.
const char* TipoDoStatus(int status);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_PROBLEMAS_HPP_
