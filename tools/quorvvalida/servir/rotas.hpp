// The service's routes: which method and path reach which answer, and what a request to them
// must carry.
#ifndef QUORVVALIDA_TOOLS_SERVIR_ROTAS_HPP_
#define QUORVVALIDA_TOOLS_SERVIR_ROTAS_HPP_

#include <regex>
#include <string>
#include <vector>

namespace quorv::servico {

enum class Destino {
  kNotas,          // Valida_Dados
  kFichas,         // Valida_Fichas
  kAuto,           // the kind told by the first line
  kWebNotas,       // Valida_Dados_Tarnweb
  kWebFichas,      // Valida_Dados_Ficha_Cadastral
  kWebTipo,        // Valida_TIPO
  kMensagemNotas,  // one text of a catalogue
  kMensagemFichas,
  kCatalogoNotas,  // a whole catalogue
  kCatalogoFichas,
  kSaude,
  kMetricas,
  kOpenApi,
  kEsquema,  // a JSON Schema of the tool's objects
};

struct Rota {
  Destino destino;
  const char* metodo;   // "GET" routes answer HEAD as well
  const char* modelo;   // as openapi.json writes the path
  const char* padrao;   // the path's regular expression, as the HTTP library matches it
  bool recebeArquivo;   // POST with a file in the body
  bool protegida;       // needs the bearer token when the service has one
  bool escolheFormato;  // answers JSON or text/plain, as the Accept header asks
};

// Every route, in the order they are tried.
const std::vector<Rota>& Rotas();

// What a method and a (decoded) path reach.
struct Encontro {
  const Rota* rota = nullptr;  // null: see `status`
  int status = 0;              // 404 no route has this path; 405 other methods have it
  std::string permitidos;      // the methods the path takes, for the Allow header of a 405
};
Encontro Encontra(const std::string& metodo, const std::string& caminho);

// The route's parameters (each query parameter it takes).
const std::vector<std::string>& ParametrosDe(Destino destino);

}  // namespace quorv::servico

#endif  // QUORVVALIDA_TOOLS_SERVIR_ROTAS_HPP_
