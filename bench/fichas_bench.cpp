// The registration-form field checks one record at a time, and whole form files per line. The
// checks run over the state that a short run left (an open request with its establishment).
#include <benchmark/benchmark.h>

#include <string>

#include "arquivo_fichas.hpp"
#include "arquivos.hpp"
#include "forms/execucao_fichas.hpp"
#include "forms/verificacoes.hpp"
#include "quorvvalida/quorvvalida.hpp"

namespace quorv {
namespace {

using teste::ArquivoFichas;
using teste::DiretorioTemporario;

double Hoje() {
  return SerialDaData(2024, 6, 30);
}

// A run that leaves a request open after its establishment and a holder.
class SolicitacaoAberta {
 public:
  SolicitacaoAberta() {
    dono_.Hoje = Hoje;
    arquivo_.Cabecalho();
    arquivo_.TR100();
    arquivo_.TR110();
    categoria_ = arquivo_.TR111().Texto();
    atividade_ = arquivo_.TR115().Texto();
    arquivo_.Pessoa("120");
    nome_ = arquivo_.NomePessoa("121").Texto();
    imovel_ = arquivo_.TR140().Texto();
    const fichas::ArgumentosFichas argumentos{
        arquivo_.Grava(diretorio_), diretorio_.Texto(), 0, 0, "REM", "", "#"};
    std::string numero;
    execucao_.Executa(dono_, argumentos, numero);
  }

  fichas::ExecucaoFichas& Execucao() { return execucao_; }
  std::string categoria_;
  std::string atividade_;
  std::string nome_;
  std::string imovel_;

 private:
  DiretorioTemporario diretorio_;
  ArquivoFichas arquivo_;
  ValidacaoFichaCadastral dono_;
  fichas::ExecucaoFichas execucao_;
};

void Categoria(benchmark::State& estado) {
  SolicitacaoAberta solicitacao;
  for (auto _ : estado) {
    benchmark::DoNotOptimize(
        fichas::Valida_Campos_Categoria(solicitacao.Execucao(), solicitacao.categoria_));
  }
}
BENCHMARK(Categoria);

void AtividadeEconomica(benchmark::State& estado) {
  SolicitacaoAberta solicitacao;
  for (auto _ : estado) {
    benchmark::DoNotOptimize(
        fichas::Valida_Campos_CNAE(solicitacao.Execucao(), solicitacao.atividade_));
  }
}
BENCHMARK(AtividadeEconomica);

void NomePessoa(benchmark::State& estado) {
  SolicitacaoAberta solicitacao;
  for (auto _ : estado) {
    benchmark::DoNotOptimize(
        fichas::Valida_Campos_Nome_Pessoa(solicitacao.Execucao(), solicitacao.nome_));
  }
}
BENCHMARK(NomePessoa);

void Imovel(benchmark::State& estado) {
  SolicitacaoAberta solicitacao;
  for (auto _ : estado) {
    benchmark::DoNotOptimize(
        fichas::Valida_Campos_Imovel(solicitacao.Execucao(), solicitacao.imovel_));
  }
}
BENCHMARK(Imovel);

// A whole file of complete requests; the time per line is the run's, files included. With the
// argument 1 a host listens to every progress event.
void ArquivoDeFichas(benchmark::State& estado) {
  DiretorioTemporario diretorio;
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  for (int i = 1; i <= 400; ++i)
    arquivo.SolicitacaoCompleta(std::to_string(1000000000 + i));
  arquivo.Trailer();
  const std::string caminho = arquivo.Grava(diretorio);
  const auto linhas = static_cast<int64_t>(arquivo.Tamanho());
  ValidacaoFichaCadastral validacao;
  validacao.Hoje = Hoje;
  int64_t eventos = 0;
  if (estado.range(0) == 1) validacao.FichaProgress = [&eventos](double&) { ++eventos; };
  std::string numero;
  for (auto _ : estado) {
    validacao.Valida_Fichas(caminho, numero, diretorio.Texto(), 0, 0, "REM");
    if (diretorio.TemAdvertencias()) estado.SkipWithError("o arquivo deveria estar limpo");
  }
  estado.SetItemsProcessed(estado.iterations() * linhas);
  estado.counters["eventos"] = static_cast<double>(eventos);
}
BENCHMARK(ArquivoDeFichas)->ArgName("ouvinte")->Arg(0)->Arg(1);

}  // namespace
}  // namespace quorv
