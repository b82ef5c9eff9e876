// The state the structure rules leave behind: counts per request, per file and of current
// records, the values taken from the establishment and from persons, and the flags' clearing.
#include <cstdio>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_fichas.hpp"
#include "arquivos.hpp"
#include "forms/execucao_fichas.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"

namespace quorv::teste {
namespace {

class EstadoDaSolicitacao : public ::testing::Test {
 protected:
  // Runs the file built so far as the web system does, with the structure rules alone, and
  // answers the status.
  int16_t Executa() {
    const fichas::ArgumentosFichas argumentos{
        arquivo.Grava(diretorio), diretorio.Texto(), 0, 0, "", "TARNWEB", "#"};
    std::string numero;
    return execucao.Executa(dono, argumentos, numero);
  }

  const fichas::EstadoSolicitacao& Estado() const { return execucao.Estado(); }

  DiretorioTemporario diretorio;
  ArquivoFichas arquivo;
  ValidacaoFichaCadastral dono;
  fichas::ExecucaoFichas execucao;
};

TEST_F(EstadoDaSolicitacao, ContagensDaSolicitacaoEDoArquivo) {
  arquivo.Cabecalho();
  arquivo.TR100("0000000001");
  arquivo.TR110();
  arquivo.TR111();
  arquivo.TR111().Campo(32, 8, "20230101");
  arquivo.TR115();
  arquivo.Pessoa("120");
  arquivo.NomePessoa("121");
  arquivo.Pessoa("125");
  arquivo.NomePessoa("126");
  arquivo.Pessoa("130");
  arquivo.NomePessoa("131");
  arquivo.TR140();
  arquivo.Pessoa("145");
  arquivo.DaSolicitacao("146");
  arquivo.DaSolicitacao("196");
  arquivo.DaSolicitacao("197");
  arquivo.DaSolicitacao("199");
  arquivo.TR100("0000000002");
  arquivo.TR110();
  arquivo.Pessoa("120").Campo(227, 8, "20230101");
  arquivo.NomePessoa("121");
  arquivo.TR140().Campo(58, 8, "20230101");
  arquivo.TR140().Campo(34, 7, "").Campo(43, 7, "0000010");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Executa(), 8);
  EXPECT_FALSE(diretorio.TemAdvertencias());

  const fichas::Contagem& arquivoTodo = Estado().porArquivo;
  EXPECT_EQ(arquivoTodo.tr110, 2);
  EXPECT_EQ(arquivoTodo.tr111, 2);
  EXPECT_EQ(arquivoTodo.tr115, 1);
  EXPECT_EQ(arquivoTodo.tr120, 2);
  EXPECT_EQ(arquivoTodo.tr125, 1);
  EXPECT_EQ(arquivoTodo.tr130, 1);
  EXPECT_EQ(arquivoTodo.tr140, 3);
  EXPECT_EQ(arquivoTodo.tr145, 1);
  EXPECT_EQ(arquivoTodo.tr196, 1);
  EXPECT_EQ(arquivoTodo.tr197, 1);

  const fichas::Contagem& segunda = Estado().porSolicitacao;
  EXPECT_EQ(segunda.tr110, 1);
  EXPECT_EQ(segunda.tr111, 0);
  EXPECT_EQ(segunda.tr120, 1);
  EXPECT_EQ(segunda.tr125, 0);
  EXPECT_EQ(segunda.tr140, 2);
  EXPECT_EQ(segunda.tr196, 0);

  // The second request's holder and first property have ended: neither is current.
  EXPECT_EQ(Estado().vigentes.tr120, 0);
  EXPECT_EQ(Estado().vigentes.tr140, 1);
  EXPECT_FALSE(Estado().titularPessoaFisica);
  EXPECT_DOUBLE_EQ(Estado().somaAreas, 100);
  EXPECT_DOUBLE_EQ(Estado().somaAreasUtilizadas, 90);
  EXPECT_TRUE(Estado().trailerVisto);
  EXPECT_FALSE(Estado().solicitacaoAberta);
  EXPECT_TRUE(Estado().solicitacaoEncerrada);
}

TEST_F(EstadoDaSolicitacao, RegistrosVigentesDoEstabelecimento) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111();
  arquivo.TR111().Campo(32, 8, "20230101");
  arquivo.TR111().Campo(32, 8, "");
  arquivo.TR115().Campo(37, 8, "20230101");
  arquivo.TR115();
  arquivo.Pessoa("120").Campo(38, 1, "f");
  arquivo.NomePessoa("121").Campo(38, 1, "f");
  arquivo.Pessoa("125").Campo(227, 8, "");
  arquivo.NomePessoa("126");
  arquivo.Pessoa("130").Campo(227, 8, "20230101");
  arquivo.NomePessoa("131");
  arquivo.TR140();
  arquivo.Pessoa("145");
  arquivo.DaSolicitacao("146");
  arquivo.Pessoa("145");
  EXPECT_EQ(Executa(), 8);
  const fichas::Vigentes& vigentes = Estado().vigentes;
  EXPECT_EQ(vigentes.tr111, 2);
  EXPECT_EQ(vigentes.tr115, 1);
  EXPECT_EQ(vigentes.tr120, 1);
  EXPECT_EQ(vigentes.tr125, 1);
  EXPECT_EQ(vigentes.tr130, 0);
  EXPECT_EQ(vigentes.tr140, 1);
  EXPECT_EQ(vigentes.tr145, 2);
  EXPECT_TRUE(Estado().titularPessoaFisica);
}

TEST_F(EstadoDaSolicitacao, ValoresDoEstabelecimento) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110()
      .Campo(50, 8, "20231231")
      .Campo(136, 7, "0000250")
      .Campo(143, 2, "03")
      .Campo(145, 2, "04")
      .Campo(147, 2, "  ");
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(Estado().declarado.area, 250);
  EXPECT_EQ(Estado().declarado.propriedades, 3);
  EXPECT_EQ(Estado().declarado.participantes, 4);
  EXPECT_EQ(Estado().declarado.titulares, -1);
  EXPECT_FALSE(Estado().estabelecimentoAtivo);
  EXPECT_EQ(dono.Dt_Fim_Atividade, "20231231");
}

TEST_F(EstadoDaSolicitacao, AberturaZeraOsValoresDaSolicitacao) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110().Campo(143, 2, "03");
  arquivo.Pessoa("120");
  arquivo.NomePessoa("121");
  arquivo.TR140();
  arquivo.DaSolicitacao("199");
  arquivo.TR100("0000000002");
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(Estado().porSolicitacao.tr110, 0);
  EXPECT_EQ(Estado().porSolicitacao.tr120, 0);
  EXPECT_EQ(Estado().vigentes.tr120, 0);
  EXPECT_EQ(Estado().declarado.propriedades, 0);
  EXPECT_DOUBLE_EQ(Estado().somaAreas, 0);
  EXPECT_FALSE(Estado().titularPessoaFisica);
  EXPECT_EQ(Estado().porArquivo.tr120, 1);
}

TEST_F(EstadoDaSolicitacao, PessoaGuardadaParaOSeuNome) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("130")
      .Campo(30, 8, "  0042.5")
      .Campo(38, 1, "j")
      .Campo(39, 11, " 0001234   ")
      .Campo(50, 14, "11222333000181");
  EXPECT_EQ(Executa(), 8);
  const fichas::Pessoa& pessoa = Estado().pessoa;
  // 42.5 goes to the even neighbour.
  EXPECT_EQ(pessoa.codigoEstadual, 42);
  EXPECT_EQ(pessoa.tipo, "j");
  EXPECT_DOUBLE_EQ(pessoa.cpf, 1234);
  EXPECT_DOUBLE_EQ(pessoa.cnpj, 11222333000181.0);
}

TEST_F(EstadoDaSolicitacao, TR120SemTR121EContadoETR125SemTR126Nao) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("120");
  arquivo.Pessoa("120");
  arquivo.Pessoa("125");
  arquivo.Pessoa("125");
  arquivo.Pessoa("130");
  arquivo.Pessoa("130");
  arquivo.TR140();
  arquivo.Pessoa("145");
  arquivo.Pessoa("145");
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(Estado().porSolicitacao.tr120, 2);
  EXPECT_EQ(Estado().porSolicitacao.tr125, 1);
  EXPECT_EQ(Estado().porSolicitacao.tr130, 1);
  EXPECT_EQ(Estado().porSolicitacao.tr145, 2);
}

TEST_F(EstadoDaSolicitacao, AberturaNaoLimpaOsFilhosDeParticipanteERepresentante) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111();
  arquivo.TR115();
  arquivo.Pessoa("120");
  arquivo.NomePessoa("121");
  arquivo.Pessoa("125");
  arquivo.NomePessoa("126");
  arquivo.Pessoa("130");
  arquivo.NomePessoa("131");
  arquivo.TR140();
  arquivo.Pessoa("145");
  arquivo.DaSolicitacao("146");
  arquivo.DaSolicitacao("196");
  arquivo.DaSolicitacao("197");
  arquivo.DaSolicitacao("199");
  arquivo.TR100("0000000002");
  EXPECT_EQ(Executa(), 8);
  const fichas::EstadoSolicitacao& estado = Estado();
  EXPECT_TRUE(estado.headerVisto);
  EXPECT_TRUE(estado.solicitacaoAberta);
  EXPECT_FALSE(estado.solicitacaoEncerrada);
  EXPECT_FALSE(estado.tr110Presente);
  EXPECT_FALSE(estado.tr111Presente);
  EXPECT_FALSE(estado.tr115Presente);
  EXPECT_FALSE(estado.tr120Presente);
  EXPECT_FALSE(estado.tr121DoTR120);
  EXPECT_FALSE(estado.tr125Presente);
  EXPECT_TRUE(estado.tr126DoTR125);
  EXPECT_FALSE(estado.tr130Presente);
  EXPECT_TRUE(estado.tr131DoTR130);
  EXPECT_FALSE(estado.tr140Presente);
  EXPECT_FALSE(estado.tr145DoTR140);
  EXPECT_FALSE(estado.tr146DoTR145);
  EXPECT_FALSE(estado.tr196Presente);
  EXPECT_FALSE(estado.tr197Presente);
  EXPECT_FALSE(estado.trailerVisto);
}

TEST_F(EstadoDaSolicitacao, EstabelecimentoLimpaTodosOsFilhos) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111();
  arquivo.TR115();
  arquivo.Pessoa("120");
  arquivo.NomePessoa("121");
  arquivo.Pessoa("125");
  arquivo.NomePessoa("126");
  arquivo.Pessoa("130");
  arquivo.NomePessoa("131");
  arquivo.TR140();
  arquivo.Pessoa("145");
  arquivo.DaSolicitacao("146");
  arquivo.DaSolicitacao("196");
  arquivo.DaSolicitacao("197");
  arquivo.TR110();
  EXPECT_EQ(Executa(), 8);
  const fichas::EstadoSolicitacao& estado = Estado();
  EXPECT_TRUE(estado.tr110Presente);
  EXPECT_FALSE(estado.tr111Presente);
  EXPECT_FALSE(estado.tr115Presente);
  EXPECT_FALSE(estado.tr120Presente);
  EXPECT_FALSE(estado.tr121DoTR120);
  EXPECT_FALSE(estado.tr125Presente);
  EXPECT_FALSE(estado.tr126DoTR125);
  EXPECT_FALSE(estado.tr130Presente);
  EXPECT_FALSE(estado.tr131DoTR130);
  EXPECT_FALSE(estado.tr140Presente);
  EXPECT_FALSE(estado.tr145DoTR140);
  EXPECT_FALSE(estado.tr146DoTR145);
  EXPECT_FALSE(estado.tr196Presente);
  EXPECT_FALSE(estado.tr197Presente);
  EXPECT_EQ(estado.porSolicitacao.tr110, 1);
  // The second establishment resets the current records but not the request's counts.
  EXPECT_EQ(estado.vigentes.tr120, 0);
  EXPECT_EQ(estado.porSolicitacao.tr120, 1);
}

TEST_F(EstadoDaSolicitacao, CadaExecucaoComecaDoZero) {
  arquivo.Cabecalho();
  arquivo.SolicitacaoCompleta("0000000001");
  arquivo.Trailer();
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(Estado().porArquivo.tr110, 1);
  EXPECT_EQ(Estado().porArquivo.tr140, 1);
}

// Rules that no file reaches, since a header is taken only on the first line and the trailer
// ends the run: the state is set between two lines as if a header or a trailer had been taken
// before, and the rules answer as written.
struct CasoInalcancavel {
  const char* nome;
  std::vector<const char*> tipos;
  // The 1-based line before which the state is set, and what is set.
  int antesDaLinha;
  bool cabecalhoVisto;
  bool trailerVisto;
  // Code and 1-based line of each warning.
  std::vector<std::pair<int, int>> advertencias;
};

// Failure messages name the case.
void PrintTo(const CasoInalcancavel& caso, std::ostream* saida) {
  *saida << caso.nome;
}

class RegraInalcancavel : public EstadoDaSolicitacao,
                          public ::testing::WithParamInterface<CasoInalcancavel> {};

TEST_P(RegraInalcancavel, AdvertenciasDaRegra) {
  const CasoInalcancavel& caso = GetParam();
  for (const char* tipo : caso.tipos)
    arquivo.Padrao(tipo);
  int eventos = 0;
  dono.FichaProgress = [&](double&) {
    if (++eventos != caso.antesDaLinha) return;
    fichas::EstadoSolicitacao& estado = execucao.Estado();
    estado.headerVisto = estado.headerVisto || caso.cabecalhoVisto;
    estado.trailerVisto = estado.trailerVisto || caso.trailerVisto;
  };
  Advertencias esperado;
  for (const auto& [codigo, linha] : caso.advertencias) {
    char numero[16];
    std::snprintf(numero, sizeof numero, "%08d", linha);
    esperado.Linha(codigo, arquivo.Linha(static_cast<std::size_t>(linha - 1)).Texto(), numero);
  }
  EXPECT_EQ(Executa(), 8);
  EXPECT_EQ(LeBytes(diretorio.Advertencias()), esperado.Texto());
}

INSTANTIATE_TEST_SUITE_P(
    EstadoDaSolicitacao, RegraInalcancavel,
    ::testing::Values(
        // A header after a header, or after the trailer, refuses itself and stops the run.
        CasoInalcancavel{"SegundoCabecalho", {"001", "100"}, 1, true, false, {{6, 1}}},
        CasoInalcancavel{"CabecalhoDepoisDoTrailer", {"001", "100"}, 1, false, true, {{9, 1}}},
        // The common check's last test; then the trailer finds one already taken.
        CasoInalcancavel{"RegistrosDepoisDoTrailer",
                         {"001", "100", "110", "111", "199", "999"},
                         4,
                         false,
                         true,
                         {{9, 4}, {9, 5}, {125, 3}, {8, 6}}},
        CasoInalcancavel{"AberturaDepoisDoTrailer",
                         {"001", "100", "110", "199", "100", "999"},
                         5,
                         false,
                         true,
                         {{9, 5}, {8, 6}}}),
    [](const ::testing::TestParamInfo<CasoInalcancavel>& info) { return info.param.nome; });

}  // namespace
}  // namespace quorv::teste
