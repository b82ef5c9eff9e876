#include "saida.hpp"

#include <cstdio>

#include <fmt/core.h>
#include <nlohmann/json.hpp>

#include "advertencias_arquivo.hpp"

namespace quorv::ferramenta {

std::string SignificadoDoStatus(Tipo tipo, int16_t status) {
  switch (status) {
    case 0:
      return "arquivo lido até o trailer, sem advertências";
    case 1:
      return "advertências nos registros; arquivo lido até o fim";
    case 8:
      return tipo == Tipo::kNotas
                 ? "erro de estrutura; validação interrompida na linha da advertência"
                 : "validação encerrada no trailer ou num erro de estrutura";
    case 9:
      return "arquivo não validado";
    default:
      return "status desconhecido";
  }
}

void ImprimeResumo(const Relatorio& relatorio, std::uint64_t limite) {
  std::uint64_t total = 0;
  if (relatorio.temAdvertencias) {
    total = LeAdvertencias(relatorio.caminhoAdvertencias, relatorio.separador, relatorio.tipo,
                           [](const Advertencia&) {});
  }
  // How the component's callers judge a run: by the warnings file, not by the status.
  const char* resultado = relatorio.status == 9       ? "não validado"
                          : relatorio.temAdvertencias ? "com advertências"
                                                      : "aceito, sem advertências";
  fmt::print("Resultado:          {}\n", resultado);
  fmt::print("Arquivo:            {}\n", relatorio.arquivo);
  fmt::print("Tipo:               {}\n", DescricaoDoTipo(relatorio.tipo));
  fmt::print("Número da remessa:  {}\n",
             relatorio.numeroRemessa.empty() ? "(não lido)" : relatorio.numeroRemessa);
  fmt::print("Status:             {} ({}{}{})\n", relatorio.status,
             SignificadoDoStatus(relatorio.tipo, relatorio.status),
             relatorio.motivo.empty() ? "" : ": ", relatorio.motivo);
  if (!relatorio.temAdvertencias) {
    fmt::print("Advertências:       nenhuma\n");
    return;
  }
  fmt::print("Advertências:       {} em {}\n\n", total, relatorio.caminhoAdvertencias);
  fmt::print("{:>8}  {:>6}  {:<3}  {}\n", "Linha", "Código", "TR", "Mensagem");
  std::uint64_t impressas = 0;
  LeAdvertencias(relatorio.caminhoAdvertencias, relatorio.separador, relatorio.tipo,
                 [&](const Advertencia& advertencia) {
                   if (limite != 0 && impressas >= limite) return;
                   ++impressas;
                   fmt::print("{:>8}  {:>6}  {:<3}  {}\n", advertencia.linha, advertencia.codigo,
                              advertencia.tr, advertencia.mensagem);
                 });
  if (impressas < total) {
    fmt::print("... e mais {} advertências (veja {})\n", total - impressas,
               relatorio.caminhoAdvertencias);
  }
}

void ImprimeJson(const Relatorio& relatorio) {
  nlohmann::json resumo = {
      {"arquivo", relatorio.arquivo},
      {"tipo", NomeDoTipo(relatorio.tipo)},
      {"status", relatorio.status},
      {"significado", SignificadoDoStatus(relatorio.tipo, relatorio.status)},
      {"numero_remessa", relatorio.numeroRemessa},
      {"arquivo_advertencias",
       relatorio.temAdvertencias ? nlohmann::json(relatorio.caminhoAdvertencias) : nullptr},
  };
  if (!relatorio.motivo.empty()) resumo["motivo"] = relatorio.motivo;
  // The warnings are written one by one as they are read, so that a file of millions of
  // warnings is never held in memory; the document closes with their count.
  std::string cabeca = resumo.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
  cabeca.pop_back();
  fmt::print("{},\"advertencias\":[", cabeca);
  std::uint64_t escritas = 0;
  if (relatorio.temAdvertencias) {
    LeAdvertencias(
        relatorio.caminhoAdvertencias, relatorio.separador, relatorio.tipo,
        [&](const Advertencia& advertencia) {
          nlohmann::json item = {
              {"codigo", advertencia.codigoNumero ? nlohmann::json(*advertencia.codigoNumero)
                                                  : nlohmann::json(advertencia.codigo)},
              {"linha", advertencia.linhaNumero ? nlohmann::json(*advertencia.linhaNumero)
                                                : nlohmann::json(nullptr)},
              {"tr", advertencia.tr},
              {"mensagem", advertencia.mensagem},
          };
          if (!advertencia.linhaNumero) item["linha_texto"] = advertencia.linha;
          fmt::print("{}{}", escritas++ == 0 ? "" : ",",
                     item.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
        });
  }
  fmt::print("],\"total_advertencias\":{}}}\n", escritas);
}

}  // namespace quorv::ferramenta
