// Why a run could not start or could not finish its output, as UltimaFalha tells it after each
// call of both validators and of the web facade. The run status stays what it always was; the
// input file is never changed, even when it is the warnings file or the return file itself.
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "arquivo_fichas.hpp"
#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/falha.hpp"
#include "quorvvalida/geral.hpp"
#include "quorvvalida/validacao.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "quorvvalida/validacao_tarnweb.hpp"
#include "robustez.hpp"
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

namespace fs = std::filesystem;

class UltimaFalha : public ::testing::Test {
 protected:
  void SetUp() override { DefinirVerificadorInscricao(InscricaoDeTeste); }
  void TearDown() override {
    entradas.Confere();
    DefinirVerificadorInscricao(nullptr);
  }

  // An invoice file with one warning 153 for each of its items before the note.
  std::string NotasComAdvertencias(int itens) {
    return entradas.Grava(entrada.Arquivo("notas-" + std::to_string(itens) + ".txt"),
                          JuntaLinhas(NotasComItensAntesDaNota(itens)));
  }

  // A form file with one warning 10 for each of its records before any request.
  std::string FichasComAdvertencias(int registros) {
    return entradas.Grava(entrada.Arquivo("fichas-" + std::to_string(registros) + ".txt"),
                          JuntaLinhas(FichasComRegistrosForaDeSolicitacao(registros)));
  }

  DiretorioTemporario entrada;
  DiretorioTemporario trabalho;
  Entradas entradas;
  std::string numero;
};

TEST_F(UltimaFalha, NenhumaAntesDeQualquerChamada) {
  EXPECT_EQ(Validacao().UltimaFalha(), Falha::Nenhuma);
  EXPECT_EQ(ValidacaoFichaCadastral().UltimaFalha(), Falha::Nenhuma);
  EXPECT_EQ(ValidacaoTarnWEB().UltimaFalha(), Falha::Nenhuma);
}

TEST_F(UltimaFalha, NotasDeCadaCausaEDepoisNenhuma) {
  const std::string arquivo = NotasComAdvertencias(2);
  Validacao validacao;
  EXPECT_EQ(validacao.Valida_Dados(arquivo, numero, trabalho.Arquivo("nao-existe")), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::DiretorioInexistente);
  EXPECT_EQ(validacao.Valida_Dados(entrada.Arquivo("nada.txt"), numero, trabalho.Texto()), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::EntradaInacessivel);
  EXPECT_EQ(validacao.Valida_Dados(entrada.Texto(), numero, trabalho.Texto()), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::EntradaInacessivel);

  fs::create_directory(fs::u8path(trabalho.Advertencias()));
  EXPECT_EQ(validacao.Valida_Dados(arquivo, numero, trabalho.Texto()), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::AdvertenciasNaoCriadas);
  fs::remove(fs::u8path(trabalho.Advertencias()));

  EXPECT_EQ(validacao.Valida_Dados(arquivo, numero, trabalho.Texto()), 1);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::Nenhuma);
  EXPECT_TRUE(trabalho.TemAdvertencias());
}

TEST_F(UltimaFalha, FichasDeCadaCausaEDepoisNenhuma) {
  const std::string arquivo = FichasComAdvertencias(2);
  ValidacaoFichaCadastral validacao;
  EXPECT_EQ(validacao.Valida_Fichas(arquivo, numero, trabalho.Arquivo("nao-existe")), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::DiretorioInexistente);
  EXPECT_EQ(validacao.Valida_Fichas(entrada.Arquivo("nada.txt"), numero, trabalho.Texto()), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::EntradaInacessivel);
  fs::create_directory(fs::u8path(trabalho.Advertencias()));
  EXPECT_EQ(validacao.Valida_Fichas(arquivo, numero, trabalho.Texto()), 9);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::AdvertenciasNaoCriadas);
  fs::remove(fs::u8path(trabalho.Advertencias()));
  EXPECT_EQ(validacao.Valida_Fichas(arquivo, numero, trabalho.Texto()), 8);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::Nenhuma);
}

TEST_F(UltimaFalha, FichasComLinhaVaziaSaoErroGrave) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  arquivo.TR100();
  const std::string caminho =
      entradas.Grava(entrada.Arquivo("fichas.txt"), JuntaLinhas(arquivo.Linhas()) + "\r\n");
  ValidacaoFichaCadastral validacao;
  EXPECT_EQ(validacao.Valida_Fichas(caminho, numero, trabalho.Texto()), 9);
  EXPECT_TRUE(validacao.bTem_Erro_Grave);
  EXPECT_EQ(validacao.UltimaFalha(), Falha::ErroGrave);
}

TEST_F(UltimaFalha, EventoQueLancaEFalhaInterna) {
  Validacao notas;
  notas.Progress = [](double&) { throw std::runtime_error("do anfitrião"); };
  EXPECT_EQ(notas.Valida_Dados(NotasComAdvertencias(1), numero, trabalho.Texto()), 9);
  EXPECT_EQ(notas.UltimaFalha(), Falha::FalhaInterna);
  ValidacaoFichaCadastral fichas;
  fichas.FichaProgress = [](double&) { throw std::runtime_error("do anfitrião"); };
  EXPECT_EQ(fichas.Valida_Fichas(FichasComAdvertencias(1), numero, trabalho.Texto()), 9);
  EXPECT_TRUE(fichas.bTem_Erro_Grave);
  EXPECT_EQ(fichas.UltimaFalha(), Falha::FalhaInterna);
}

// The file to validate is the warnings file of the working directory, however its path is
// written: the run is refused and the file stays as it was.
TEST_F(UltimaFalha, EntradaQueEAsAdvertenciasPorQualquerCaminho) {
  GravaBytes(trabalho.Advertencias(), LeBytes(NotasComAdvertencias(1)));
  entradas.Registra(trabalho.Advertencias());
  const std::string link = entrada.Arquivo("outro-nome.txt");
  fs::create_symlink(fs::u8path(trabalho.Advertencias()), fs::u8path(link));
  const std::string comPonto = trabalho.Texto() + "/./ADVERTENCIAS.TXT";
  for (const std::string& caminho : {trabalho.Advertencias(), link, comPonto}) {
    Validacao notas;
    EXPECT_EQ(notas.Valida_Dados(caminho, numero, trabalho.Texto()), 9) << caminho;
    EXPECT_EQ(notas.UltimaFalha(), Falha::EntradaEhAdvertencias) << caminho;
    ValidacaoFichaCadastral fichas;
    EXPECT_EQ(fichas.Valida_Fichas(caminho, numero, trabalho.Texto()), 9) << caminho;
    EXPECT_EQ(fichas.UltimaFalha(), Falha::EntradaEhAdvertencias) << caminho;
    EXPECT_FALSE(fichas.bTem_Erro_Grave);
    ValidacaoTarnWEB web;
    EXPECT_FALSE(web.Valida_Dados_Tarnweb(caminho, "/R.TXT", trabalho.Texto(), numero));
    EXPECT_EQ(web.UltimaFalha(), Falha::EntradaEhAdvertencias) << caminho;
    EXPECT_FALSE(web.Valida_Dados_Ficha_Cadastral(caminho, "/R.TXT", trabalho.Texto(), numero));
    EXPECT_EQ(web.UltimaFalha(), Falha::EntradaEhAdvertencias) << caminho;
  }
  EXPECT_FALSE(fs::exists(fs::u8path(trabalho.Arquivo("R.TXT"))));
}

TEST_F(UltimaFalha, EscritaQueFalhaDeixaOStatusEContaAFalha) {
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  fs::create_symlink(cheio, fs::u8path(trabalho.Advertencias()));
  Validacao notas;
  EXPECT_EQ(notas.Valida_Dados(NotasComAdvertencias(300), numero, trabalho.Texto()), 1);
  EXPECT_EQ(notas.UltimaFalha(), Falha::EscritaAdvertencias);
  ValidacaoFichaCadastral fichas;
  EXPECT_EQ(fichas.Valida_Fichas(FichasComAdvertencias(300), numero, trabalho.Texto()), 8);
  EXPECT_FALSE(fichas.bTem_Erro_Grave);
  EXPECT_EQ(fichas.UltimaFalha(), Falha::EscritaAdvertencias);
  // A small run whose few warnings stay in the buffer until the end fails at the closing.
  EXPECT_EQ(notas.Valida_Dados(NotasComAdvertencias(1), numero, trabalho.Texto()), 1);
  EXPECT_EQ(notas.UltimaFalha(), Falha::EscritaAdvertencias);
}

TEST_F(UltimaFalha, FachadaComRetornoQueNaoSeGrava) {
  const std::string arquivo = NotasComAdvertencias(2);
  ValidacaoTarnWEB web;
  web.ProgramaChamador("SISTEMA");
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(arquivo, "/nao-existe/R.TXT", trabalho.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::RetornoNaoCriado);
  EXPECT_FALSE(trabalho.TemAdvertencias());
  const std::string cheio = DispositivoCheio();
  if (cheio.empty()) GTEST_SKIP() << "sem dispositivo que recuse toda escrita";
  fs::create_symlink(cheio, fs::u8path(trabalho.Arquivo("CHEIO.TXT")));
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(arquivo, "/CHEIO.TXT", trabalho.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::EscritaRetorno);
  EXPECT_FALSE(trabalho.TemAdvertencias());
  EXPECT_TRUE(
      web.Valida_Dados_Tarnweb(NotasComAdvertencias(0), "/R.TXT", trabalho.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::Nenhuma);
}

// A return file that would be the file to validate, or the warnings file it is made from, is
// refused before anything is validated or written.
TEST_F(UltimaFalha, FachadaComRetornoQueEAEntrada) {
  const std::string notas = NotasComAdvertencias(2);
  const std::string fichas = FichasComAdvertencias(2);
  ValidacaoTarnWEB web;
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(notas, "/notas-2.txt", entrada.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::RetornoEhEntrada);
  EXPECT_FALSE(web.Valida_TIPO(fichas,
                               "/../" + entrada.Caminho().filename().u8string() + "/fichas-2.txt",
                               entrada.Texto(), numero, "F"));
  EXPECT_EQ(web.UltimaFalha(), Falha::RetornoEhEntrada);
  EXPECT_FALSE(web.Valida_Dados_Tarnweb(notas, "/ADVERTENCIAS.TXT", trabalho.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::RetornoEhEntrada);
  EXPECT_FALSE(entrada.TemAdvertencias());
  EXPECT_FALSE(trabalho.TemAdvertencias());
}

TEST_F(UltimaFalha, FachadaDeFichasSemArquivoRespondeTrueEContaAFalha) {
  ValidacaoTarnWEB web;
  EXPECT_TRUE(web.Valida_Dados_Ficha_Cadastral(entrada.Arquivo("nada.txt"), "/R.TXT",
                                               trabalho.Texto(), numero));
  EXPECT_EQ(web.UltimaFalha(), Falha::EntradaInacessivel);
  EXPECT_FALSE(
      web.Valida_TIPO(entrada.Arquivo("nada.txt"), "/R.TXT", trabalho.Texto(), numero, "p"));
  EXPECT_EQ(web.UltimaFalha(), Falha::Nenhuma);
}

TEST_F(UltimaFalha, CadaFalhaTemSuaFrase) {
  std::set<std::string> frases;
  for (int32_t valor = 0; valor <= 10; ++valor) {
    const std::string frase = DescricaoDaFalha(static_cast<Falha>(valor));
    EXPECT_FALSE(frase.empty());
    EXPECT_EQ(frase.back(), '.') << frase;
    frases.insert(frase);
  }
  EXPECT_EQ(frases.size(), 11u);
  EXPECT_STREQ(DescricaoDaFalha(Falha::DiretorioInexistente),
               "O diretório de trabalho não existe.");
  EXPECT_STREQ(DescricaoDaFalha(static_cast<Falha>(99)), "Falha desconhecida.");
  EXPECT_EQ(static_cast<int32_t>(Falha::EscritaAdvertencias), 5);
  EXPECT_EQ(static_cast<int32_t>(Falha::FalhaInterna), 10);
}

}  // namespace
}  // namespace quorv::teste
