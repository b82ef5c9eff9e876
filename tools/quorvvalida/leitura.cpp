// Lists a warnings file through the component's own readers, as the web facade reads it.
#include <filesystem>
#include <string>
#include <system_error>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "comandos.hpp"
#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"

namespace quorv::ferramenta {
namespace {

std::string Apara(const std::string& texto) {
  const auto primeiro = texto.find_first_not_of(' ');
  if (primeiro == std::string::npos) return {};
  return texto.substr(primeiro, texto.find_last_not_of(' ') - primeiro + 1);
}

// Walks the reader as its callers do: use the current record, test the end, move on.
template <typename Leitor>
int Lista(Leitor& leitor, const std::string& arquivo, Tipo tipo, const OpcoesGerais& gerais) {
  leitor.OpenStream(arquivo);
  const char* rotuloNota = tipo == Tipo::kNotas ? "Nota" : "Solicitação";
  nlohmann::json registros = nlohmann::json::array();
  if (!gerais.json && !gerais.quieto && leitor.TotalRecords() > 0) {
    fmt::print("{:>8}  {:<3}  {:<20}  {}\n", "Linha", "TR", rotuloNota, "Descrição");
  }
  for (int32_t lidos = 0; lidos < leitor.TotalRecords(); ++lidos) {
    if (gerais.json) {
      registros.push_back({{"linha", leitor.LINHA()},
                           {"tr", leitor.TR()},
                           {"nota", leitor.Nota()},
                           {"descricao", Apara(leitor.Descricao())}});
    } else if (!gerais.quieto) {
      fmt::print("{:>8}  {:<3}  {:<20}  {}\n", leitor.LINHA(), leitor.TR(), leitor.Nota(),
                 Apara(leitor.Descricao()));
    }
    if (leitor.EndOfStream()) break;
    leitor.MoveNext();
  }
  if (gerais.json) {
    fmt::print("{}\n", nlohmann::json{{"arquivo", arquivo},
                                      {"tipo", NomeDoTipo(tipo)},
                                      {"total", leitor.TotalRecords()},
                                      {"advertencias", registros}}
                           .dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
  } else if (!gerais.quieto) {
    fmt::print("{} advertência(s)\n", leitor.TotalRecords());
  }
  leitor.CloseStream();
  return kSemAdvertencias;
}

}  // namespace

int ListaAdvertencias(Tipo tipo, const std::string& arquivo, const OpcoesGerais& gerais) {
  std::error_code erro;
  if (!std::filesystem::is_regular_file(std::filesystem::u8path(arquivo), erro)) {
    Erro("arquivo não encontrado: " + arquivo);
    return kNaoValidado;
  }
  if (tipo == Tipo::kNotas) {
    clsQuorvAdvBD leitor;
    return Lista(leitor, arquivo, tipo, gerais);
  }
  clsQuorvAdvBDFichas leitor;
  return Lista(leitor, arquivo, tipo, gerais);
}

}  // namespace quorv::ferramenta
