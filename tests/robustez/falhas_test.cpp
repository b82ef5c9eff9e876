// Faults of the files a run writes: a warnings file that cannot be created ends the run with 9; a
// warning that cannot be written is lost, the recording method answers false and the run goes
// on to the status it finds; a return file that cannot be created is skipped. Nothing fails
// outright and the input file is never touched.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_fichas.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "robustez.hpp"
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

namespace fs = std::filesystem;

double Hoje() {
  return SerialDaData(2024, 6, 30);
}

class Falhas : public ::testing::Test {
 protected:
  void SetUp() override { DefinirVerificadorInscricao(InscricaoDeTeste); }
  void TearDown() override {
    entradas.Confere();
    DefinirVerificadorInscricao(nullptr);
  }

  // An invoice file whose group holds many items before its note: one warning 153 for each.
  std::string NotasComMuitasAdvertencias(const DiretorioTemporario& onde, int itens) {
    return entradas.Grava(onde.Arquivo("notas.txt"), JuntaLinhas(NotasComItensAntesDaNota(itens)));
  }

  // A form file with many records before any request: one warning 10 for each.
  std::string FichasComMuitasAdvertencias(const DiretorioTemporario& onde, int registros) {
    linhasFichas = FichasComRegistrosForaDeSolicitacao(registros);
    return entradas.Grava(onde.Arquivo("fichas.txt"), JuntaLinhas(linhasFichas));
  }

  // A working directory whose ADVERTENCIAS.TXT is a directory, with a file in it.
  static void AdvertenciasQueEDiretorio(const DiretorioTemporario& trabalho) {
    fs::create_directory(fs::u8path(trabalho.Advertencias()));
    GravaBytes(trabalho.Advertencias() + "/dentro.txt", "fica");
  }

  static void ConfereDiretorioIntacto(const DiretorioTemporario& trabalho) {
    EXPECT_TRUE(fs::is_directory(fs::u8path(trabalho.Advertencias())));
    EXPECT_EQ(LeBytes(trabalho.Advertencias() + "/dentro.txt"), "fica");
  }

  DiretorioTemporario entrada;
  Entradas entradas;
  // The lines of the last form file made.
  std::vector<std::string> linhasFichas;
};

TEST_F(Falhas, NotasSemComoCriarAsAdvertencias) {
  const std::string caminho = NotasComMuitasAdvertencias(entrada, 3);
  DiretorioTemporario trabalho;
  AdvertenciasQueEDiretorio(trabalho);
  Validacao validacao;
  validacao.Hoje = Hoje;
  std::string numero = "antes";
  EXPECT_EQ(validacao.Valida_Dados(caminho, numero, trabalho.Texto()), 9);
  EXPECT_EQ(numero, "antes");
  ConfereDiretorioIntacto(trabalho);
}

TEST_F(Falhas, FichasSemComoCriarAsAdvertencias) {
  const std::string caminho = FichasComMuitasAdvertencias(entrada, 3);
  DiretorioTemporario trabalho;
  AdvertenciasQueEDiretorio(trabalho);
  ValidacaoFichaCadastral validacao;
  validacao.Hoje = Hoje;
  std::string numero;
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numero, trabalho.Texto()), 9);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
  ConfereDiretorioIntacto(trabalho);
}

TEST_F(Falhas, PastaVaziaNoLugarDasAdvertenciasNaoEApagada) {
  // The finish step deletes a warnings file, never a directory of that name.
  const std::string notas = NotasComMuitasAdvertencias(entrada, 1);
  const std::string fichasCaminho = FichasComMuitasAdvertencias(entrada, 1);
  DiretorioTemporario trabalho;
  fs::create_directory(fs::u8path(trabalho.Advertencias()));
  Validacao validacao;
  std::string numero;
  EXPECT_EQ(validacao.Valida_Dados(notas, numero, trabalho.Texto()), 9);
  EXPECT_TRUE(fs::is_directory(fs::u8path(trabalho.Advertencias())));
  ValidacaoFichaCadastral validacaoFichas;
  EXPECT_EQ(validacaoFichas.Valida_Fichas(fichasCaminho, numero, trabalho.Texto()), 9);
  EXPECT_TRUE(fs::is_directory(fs::u8path(trabalho.Advertencias())));
}

TEST_F(Falhas, NotasComEscritaQueFalhaNoMeio) {
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  const std::string caminho = NotasComMuitasAdvertencias(entrada, 600);

  // The host records its own warning at every progress event and keeps the answers.
  const auto executa = [&](const DiretorioTemporario& trabalho, std::vector<bool>& respostas) {
    Validacao validacao;
    validacao.Hoje = Hoje;
    validacao.Progress = [&](double&) { respostas.push_back(validacao.Gravar_Erro(999)); };
    std::string numero;
    return validacao.Valida_Dados(caminho, numero, trabalho.Texto());
  };

  DiretorioTemporario comum;
  std::vector<bool> respostasComuns;
  EXPECT_EQ(executa(comum, respostasComuns), 1);
  ASSERT_FALSE(respostasComuns.empty());
  EXPECT_EQ(std::count(respostasComuns.begin(), respostasComuns.end(), false), 0);

  DiretorioTemporario trabalho;
  fs::create_symlink(cheio, fs::u8path(trabalho.Advertencias()));
  std::vector<bool> respostas;
  EXPECT_EQ(executa(trabalho, respostas), 1);
  EXPECT_EQ(respostas.size(), respostasComuns.size());
  EXPECT_GT(std::count(respostas.begin(), respostas.end(), false), 0);
  EXPECT_TRUE(fs::is_symlink(fs::u8path(trabalho.Advertencias())));
}

TEST_F(Falhas, FichasComEscritaQueFalhaNoMeio) {
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  const std::string caminho = FichasComMuitasAdvertencias(entrada, 400);

  const auto executa = [&](const DiretorioTemporario& trabalho, std::vector<bool>& respostas) {
    ValidacaoFichaCadastral validacao;
    validacao.Hoje = Hoje;
    validacao.FichaProgress = [&](double&) {
      respostas.push_back(validacao.Gravar_Erro_Ficha(999));
    };
    std::string numero;
    const int16_t status = validacao.Valida_Fichas(caminho, numero, trabalho.Texto());
    EXPECT_FALSE(validacao.bTem_Erro_Grave);
    return status;
  };

  DiretorioTemporario comum;
  std::vector<bool> respostasComuns;
  EXPECT_EQ(executa(comum, respostasComuns), 8);
  ASSERT_FALSE(respostasComuns.empty());
  EXPECT_EQ(std::count(respostasComuns.begin(), respostasComuns.end(), false), 0);

  DiretorioTemporario trabalho;
  fs::create_symlink(cheio, fs::u8path(trabalho.Advertencias()));
  std::vector<bool> respostas;
  EXPECT_EQ(executa(trabalho, respostas), 8);
  EXPECT_EQ(respostas.size(), respostasComuns.size());
  EXPECT_GT(std::count(respostas.begin(), respostas.end(), false), 0);
}

TEST_F(Falhas, FichasComEscritaQueFalhaSemAnfitriao) {
  // Without the host's own warnings the run writes its 400 warnings 10 and ends at the trailer.
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  const std::string caminho = FichasComMuitasAdvertencias(entrada, 400);
  DiretorioTemporario comum;
  ValidacaoFichaCadastral validacao;
  std::string numero;
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numero, comum.Texto()), 8);
  Advertencias esperado;
  for (std::size_t i = 1; i + 1 < linhasFichas.size(); ++i) {
    char linha[32];
    std::snprintf(linha, sizeof linha, "%08zu", i + 1);
    esperado.Linha(10, linhasFichas[i], linha);
  }
  EXPECT_EQ(LeBytes(comum.Advertencias()), esperado.Texto());

  DiretorioTemporario trabalho;
  fs::create_symlink(cheio, fs::u8path(trabalho.Advertencias()));
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numero, trabalho.Texto()), 8);
  EXPECT_FALSE(validacao.bTem_Erro_Grave);
}

// Names of a return file that cannot be created: in a folder that does not exist, or the name of
// a folder.
class RetornoImpossivel : public Falhas, public ::testing::WithParamInterface<std::string> {
 protected:
  // Prepares the working directory for the return file name of the case; answers the name.
  std::string Prepara(const DiretorioTemporario& trabalho) {
    const std::string nome = GetParam();
    if (nome == "/PASTA.TXT") {
      fs::create_directory(fs::u8path(trabalho.Texto() + nome));
      GravaBytes(trabalho.Texto() + nome + "/dentro.txt", "fica");
    }
    if (nome == "/CHEIO.TXT") {
      if (DispositivoCheio().empty()) return {};
      fs::create_symlink(DispositivoCheio(), fs::u8path(trabalho.Texto() + nome));
    }
    return nome;
  }

  void ConfereNadaCriado(const DiretorioTemporario& trabalho) {
    EXPECT_FALSE(trabalho.TemAdvertencias());
    if (GetParam() == "/PASTA.TXT") {
      EXPECT_EQ(LeBytes(trabalho.Texto() + "/PASTA.TXT/dentro.txt"), "fica");
    } else if (GetParam() == "/CHEIO.TXT") {
      EXPECT_TRUE(fs::is_symlink(fs::u8path(trabalho.Texto() + "/CHEIO.TXT")));
    } else {
      EXPECT_FALSE(fs::exists(fs::u8path(trabalho.Texto() + "/nao-existe")));
    }
  }
};

TEST_P(RetornoImpossivel, NotasRespondemFalseEApagamAsAdvertencias) {
  ArquivoNotas arquivo;
  arquivo.CabecalhoV1();
  const std::string caminho =
      entradas.Grava(entrada.Arquivo("notas.txt"), JuntaLinhas(arquivo.Linhas()));
  DiretorioTemporario trabalho;
  const std::string nome = Prepara(trabalho);
  if (nome.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  ValidacaoTarnWEB web;
  std::string numero;
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(caminho, nome, trabalho.Texto(), numero));
  EXPECT_EQ(numero, "000001");
  ConfereNadaCriado(trabalho);
}

TEST_P(RetornoImpossivel, FichasRespondemFalseEApagamAsAdvertencias) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  arquivo.TR100();
  const std::string caminho =
      entradas.Grava(entrada.Arquivo("fichas.txt"), JuntaLinhas(arquivo.Linhas()));
  DiretorioTemporario trabalho;
  const std::string nome = Prepara(trabalho);
  if (nome.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  ValidacaoTarnWEB web;
  std::string numero;
  EXPECT_FALSE(web.Valida_Dados_Ficha_Cadastral(caminho, nome, trabalho.Texto(), numero));
  EXPECT_EQ(numero, "000001");
  ConfereNadaCriado(trabalho);
}

INSTANTIATE_TEST_SUITE_P(Falhas, RetornoImpossivel,
                         ::testing::Values("/nao-existe/RETORNO.TXT", "/PASTA.TXT", "/CHEIO.TXT"),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           return info.index == 0   ? std::string("PastaInexistente")
                                  : info.index == 1 ? std::string("NomeDePasta")
                                                    : std::string("DispositivoCheio");
                         });

TEST_F(Falhas, FachadaComAdvertenciasQueEDiretorioRespondeTrue) {
  // The run cannot create its warnings file (9) and leaves none: nothing to report.
  ArquivoNotas notas;
  notas.CabecalhoV1();
  const std::string caminhoNotas =
      entradas.Grava(entrada.Arquivo("notas.txt"), JuntaLinhas(notas.Linhas()));
  ArquivoFichas arquivoFichas;
  arquivoFichas.Cabecalho();
  const std::string caminhoFichas =
      entradas.Grava(entrada.Arquivo("fichas.txt"), JuntaLinhas(arquivoFichas.Linhas()));
  DiretorioTemporario trabalho;
  AdvertenciasQueEDiretorio(trabalho);
  ValidacaoTarnWEB web;
  std::string numero;
  EXPECT_TRUE(web.Valida_Dados_Tarnweb(caminhoNotas, "/RETORNO.TXT", trabalho.Texto(), numero));
  EXPECT_TRUE(
      web.Valida_Dados_Ficha_Cadastral(caminhoFichas, "/RETORNO.TXT", trabalho.Texto(), numero));
  EXPECT_FALSE(fs::exists(fs::u8path(trabalho.Texto() + "/RETORNO.TXT")));
  ConfereDiretorioIntacto(trabalho);
}

}  // namespace
}  // namespace quorv::teste
