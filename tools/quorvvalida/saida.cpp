#include "saida.hpp"

#include <cstdio>

#include <fmt/core.h>

#include "advertencias_arquivo.hpp"
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
std::int32_t Lista(const std::string& arquivo, Tipo tipo) {
  Leitor leitor;
  leitor.OpenStream(arquivo);
  const char* rotuloNota = tipo == Tipo::kNotas ? "Nota" : "Solicitação";
  if (leitor.TotalRecords() > 0) {
    fmt::print("{:>8}  {:<3}  {:<20}  {}\n", "Linha", "TR", rotuloNota, "Descrição");
  }
  std::int32_t lidos = 0;
  for (; lidos < leitor.TotalRecords(); ++lidos) {
    fmt::print("{:>8}  {:<3}  {:<20}  {}\n", leitor.LINHA(), leitor.TR(), leitor.Nota(),
               Apara(leitor.Descricao()));
    if (leitor.EndOfStream()) {
      ++lidos;
      break;
    }
    leitor.MoveNext();
  }
  leitor.CloseStream();
  fmt::print("{} advertência(s)\n", lidos);
  return lidos;
}

}  // namespace

void Aviso(const std::string& texto) {
  fmt::print(stderr, "quorvvalida: {}\n", texto);
}

void ImprimeResumo(const ResultadoValidacao& resultado, std::uint64_t limite) {
  const bool temAdvertencias = !resultado.caminhoAdvertencias.empty();
  std::uint64_t total = 0;
  if (temAdvertencias) {
    total = ContaLinhas(resultado.caminhoAdvertencias);
  }
  // How the component's callers judge a run: by the warnings file, not by the status.
  const char* veredito = resultado.erro    ? "não validado"
                         : temAdvertencias ? "com advertências"
                                           : "aceito, sem advertências";
  if (resultado.erro && temAdvertencias) veredito = "validação incompleta";
  fmt::print("Resultado:          {}\n", veredito);
  fmt::print("Arquivo:            {}\n", resultado.arquivo);
  fmt::print("Tipo:               {}\n", DescricaoDoTipo(resultado.tipo));
  fmt::print("Número da remessa:  {}\n",
             resultado.numeroRemessa.empty() ? "(não lido)" : resultado.numeroRemessa);
  fmt::print("Status:             {} ({})\n", resultado.status,
             SignificadoDoStatus(resultado.tipo, resultado.status));
  if (!temAdvertencias) {
    fmt::print("Advertências:       nenhuma\n");
    return;
  }
  fmt::print("Advertências:       {} em {}\n", total, resultado.caminhoAdvertencias);
  // A warnings file that could not be written whole is not shown as if it were the run's.
  if (resultado.erro) return;
  fmt::print("\n{:>8}  {:>6}  {:<3}  {}\n", "Linha", "Código", "TR", "Mensagem");
  std::uint64_t impressas = 0;
  LeAdvertencias(resultado.caminhoAdvertencias, resultado.separador, resultado.tipo,
                 [&](const Advertencia& advertencia) {
                   ++impressas;
                   fmt::print("{:>8}  {:>6}  {:<3}  {}\n", advertencia.linha, advertencia.codigo,
                              advertencia.tr, advertencia.mensagem);
                   return limite == 0 || impressas < limite;
                 });
  if (impressas < total) {
    fmt::print("... e mais {} advertências (veja {})\n", total - impressas,
               resultado.caminhoAdvertencias);
  }
}

void ImprimeWeb(const ResultadoWeb& resultado) {
  fmt::print("Arquivo:            {}\n", resultado.arquivo);
  fmt::print("Tipo:               {}\n", resultado.tipo
                                             ? DescricaoDoTipo(*resultado.tipo)
                                             : "não reconhecido pela fachada (nada validado)");
  fmt::print("Número da remessa:  {}\n",
             resultado.numeroRemessa.empty() ? "(não lido)" : resultado.numeroRemessa);
  if (resultado.erro) {
    fmt::print("Resultado:          não validado\n");
  } else if (resultado.resultado) {
    fmt::print("Resultado:          aceito, sem arquivo de advertências\n");
  } else if (!resultado.arquivoRetorno.empty()) {
    fmt::print("Resultado:          com advertências; arquivo de retorno em {}\n",
               resultado.arquivoRetorno);
  } else {
    fmt::print("Resultado:          recusado\n");
  }
}

void ImprimeResumoLote(const ResumoLote& resumo) {
  fmt::print(
      "Lote:               {} arquivo(s): {} aceito(s), {} com advertências, {} com "
      "falha; {} advertência(s) ao todo\n",
      resumo.arquivos, resumo.aceitos, resumo.comAdvertencias, resumo.comFalha,
      resumo.totalAdvertencias);
}

std::int32_t ImprimeListaAdvertencias(const std::string& arquivo, Tipo tipo) {
  return tipo == Tipo::kNotas ? Lista<clsQuorvAdvBD>(arquivo, tipo)
                              : Lista<clsQuorvAdvBDFichas>(arquivo, tipo);
}

bool SaidaGravada() {
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

}  // namespace quorv::ferramenta
