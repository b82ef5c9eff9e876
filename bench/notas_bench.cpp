// The invoice record checks one record at a time, and whole invoice files per line. The checks
// run over the state that a short run left (its header, its group, a pinned today); with the
// run's files closed, a warning is built but not written.
#include <benchmark/benchmark.h>

#include <string>

#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "invoices/execucao_notas.hpp"
#include "invoices/verificacoes.hpp"
#include "quorvvalida/quorvvalida.hpp"

namespace quorv {
namespace {

using teste::ArquivoNotas;
using teste::DiretorioTemporario;

int16_t InscricaoAceita(const std::string&, const std::string&) {
  return 0;
}

double Hoje() {
  return SerialDaData(2024, 6, 30);
}

// A run of a header and an open group, whose state the checks then read.
class GrupoAberto {
 public:
  GrupoAberto() {
    DefinirVerificadorInscricao(InscricaoAceita);
    arquivo_.CabecalhoV1();
    arquivo_.TR01();
    nota_ = arquivo_.TR10Valido().Texto();
    liquidacao_ = arquivo_.TR20Valido().Texto();
    auto_ = arquivo_.TR40Valido().Texto();
    const notas::ArgumentosNotas argumentos{
        arquivo_.Grava(diretorio_), diretorio_.Texto(), 0, 0, "", "", "#"};
    std::string numero;
    execucao_.Executa(argumentos, numero, {}, Hoje);
  }
  ~GrupoAberto() { DefinirVerificadorInscricao(nullptr); }

  notas::ExecucaoNotas& Execucao() { return execucao_; }
  const std::string& Nota() const { return nota_; }
  const std::string& Liquidacao() const { return liquidacao_; }
  const std::string& Auto() const { return auto_; }

 private:
  DiretorioTemporario diretorio_;
  ArquivoNotas arquivo_;
  notas::ExecucaoNotas execucao_;
  std::string nota_;
  std::string liquidacao_;
  std::string auto_;
};

void TR10Valido(benchmark::State& estado) {
  GrupoAberto grupo;
  for (auto _ : estado)
    benchmark::DoNotOptimize(notas::VerificaTR10(grupo.Execucao(), grupo.Nota()));
}
BENCHMARK(TR10Valido);

// A note wrong in type, series, number and situation: four warnings.
void TR10ComDefeitos(benchmark::State& estado) {
  GrupoAberto grupo;
  std::string nota = grupo.Nota();
  nota.replace(20, 1, "5").replace(21, 3, "ABC").replace(24, 6, "12345A").replace(72, 1, "7");
  for (auto _ : estado)
    benchmark::DoNotOptimize(notas::VerificaTR10(grupo.Execucao(), nota));
}
BENCHMARK(TR10ComDefeitos);

void TR20Valido(benchmark::State& estado) {
  GrupoAberto grupo;
  for (auto _ : estado)
    benchmark::DoNotOptimize(notas::VerificaTR20(grupo.Execucao(), grupo.Liquidacao()));
}
BENCHMARK(TR20Valido);

void TR40Valido(benchmark::State& estado) {
  GrupoAberto grupo;
  for (auto _ : estado)
    benchmark::DoNotOptimize(notas::VerificaTR40(grupo.Execucao(), grupo.Auto()));
}
BENCHMARK(TR40Valido);

// A whole file of groups of three notes with their items, a settlement with its items and a
// tax assessment; the time per line is the run's, files included. With the argument 1 a host
// listens to every progress event.
void ArquivoDeNotas(benchmark::State& estado) {
  DefinirVerificadorInscricao(InscricaoAceita);
  DiretorioTemporario diretorio;
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  for (int grupo = 0; grupo < 200; ++grupo) {
    arquivo.TR01();
    for (int nota = 0; nota < 3; ++nota) {
      arquivo.TR10Valido();
      arquivo.Novo("15");
    }
    arquivo.TR20Valido();
    arquivo.Novo("25");
    arquivo.TR40Valido();
    arquivo.TR98();
  }
  arquivo.TR99();
  const std::string caminho = arquivo.Grava(diretorio);
  const auto linhas = static_cast<int64_t>(arquivo.Linhas().size());
  Validacao validacao;
  validacao.Hoje = Hoje;
  int64_t eventos = 0;
  if (estado.range(0) == 1) validacao.Progress = [&eventos](double&) { ++eventos; };
  std::string numero;
  for (auto _ : estado) {
    if (validacao.Valida_Dados(caminho, numero, diretorio.Texto()) != 0) {
      estado.SkipWithError("o arquivo deveria estar limpo");
    }
  }
  estado.SetItemsProcessed(estado.iterations() * linhas);
  estado.counters["eventos"] = static_cast<double>(eventos);
  DefinirVerificadorInscricao(nullptr);
}
BENCHMARK(ArquivoDeNotas)->ArgName("ouvinte")->Arg(0)->Arg(1);

}  // namespace
}  // namespace quorv
