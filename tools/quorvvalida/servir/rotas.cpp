#include "rotas.hpp"

namespace quorv::servico {
namespace {

struct RotaCompilada {
  const Rota* rota;
  std::regex expressao;
};

const std::vector<RotaCompilada>& Compiladas() {
  static const std::vector<RotaCompilada> compiladas = [] {
    std::vector<RotaCompilada> lista;
    for (const Rota& rota : Rotas())
      lista.push_back({&rota, std::regex(rota.padrao)});
    return lista;
  }();
  return compiladas;
}

}  // namespace

const std::vector<Rota>& Rotas() {
  static const std::vector<Rota> rotas = {
      {Destino::kNotas, "POST", "/v1/notas", "/v1/notas", true, true, true},
      {Destino::kFichas, "POST", "/v1/fichas", "/v1/fichas", true, true, true},
      {Destino::kAuto, "POST", "/v1/auto", "/v1/auto", true, true, true},
      {Destino::kWebNotas, "POST", "/v1/web/notas", "/v1/web/notas", true, true, true},
      {Destino::kWebFichas, "POST", "/v1/web/fichas", "/v1/web/fichas", true, true, true},
      {Destino::kWebTipo, "POST", "/v1/web/tipo/{tipo}", "/v1/web/tipo/([^/]+)", true, true, true},
      {Destino::kMensagemNotas, "GET", "/v1/mensagens/notas/{codigo}",
       "/v1/mensagens/notas/([^/]+)", false, true, true},
      {Destino::kMensagemFichas, "GET", "/v1/mensagens/fichas/{codigo}",
       "/v1/mensagens/fichas/([^/]+)", false, true, true},
      {Destino::kCatalogoNotas, "GET", "/v1/mensagens/notas", "/v1/mensagens/notas", false, true,
       true},
      {Destino::kCatalogoFichas, "GET", "/v1/mensagens/fichas", "/v1/mensagens/fichas", false, true,
       true},
      {Destino::kSaude, "GET", "/saude", "/saude", false, false, false},
      {Destino::kMetricas, "GET", "/metricas", "/metricas", false, true, false},
      {Destino::kOpenApi, "GET", "/openapi.json", "/openapi.json", false, false, false},
      {Destino::kEsquema, "GET", "/esquemas/{nome}", "/esquemas/([^/]+)", false, false, false},
  };
  return rotas;
}

Encontro Encontra(const std::string& metodo, const std::string& caminho) {
  Encontro encontro;
  const std::string& efetivo = metodo == "HEAD" ? std::string("GET") : metodo;
  for (const RotaCompilada& compilada : Compiladas()) {
    if (!std::regex_match(caminho, compilada.expressao)) continue;
    if (efetivo == compilada.rota->metodo) {
      encontro.rota = compilada.rota;
      return encontro;
    }
    const std::string permitidos = std::string(compilada.rota->metodo) == "GET"
                                       ? "GET, HEAD"
                                       : std::string(compilada.rota->metodo);
    if (encontro.permitidos.find(permitidos) == std::string::npos) {
      encontro.permitidos += (encontro.permitidos.empty() ? "" : ", ") + permitidos;
    }
  }
  encontro.status = encontro.permitidos.empty() ? 404 : 405;
  return encontro;
}

const std::vector<std::string>& ParametrosDe(Destino destino) {
  static const std::vector<std::string> validacao = {
      "chave_remessa", "chave_processamento", "origem", "servidor", "separador", "hoje"};
  static const std::vector<std::string> web = {"programa_chamador", "tipo_arquivo", "hoje"};
  static const std::vector<std::string> nenhum;
  switch (destino) {
    case Destino::kNotas:
    case Destino::kFichas:
    case Destino::kAuto:
      return validacao;
    case Destino::kWebNotas:
    case Destino::kWebFichas:
    case Destino::kWebTipo:
      return web;
    default:
      return nenhum;
  }
}

}  // namespace quorv::servico
