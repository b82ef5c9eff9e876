// How each warning line is written: code, keys, record and line number.
#include <vector>

#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

using GravacaoNotas = TesteNotas;

TEST_F(GravacaoNotas, ArgumentosOmitidosDaoChavesZeroESeparadorCerquilha) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  const Registro& item = arquivo.Novo("25");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), "155#0#0#" + item.Texto() + "#00000003\r\n" + "88#0#0#" + item.Texto() +
                            "#00000003\r\n");
}

TEST_F(GravacaoNotas, ChavesESeparadorDoChamador) {
  arquivo.CabecalhoV1();
  const Registro& abertura = arquivo.TR01();
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 123,
                                   0, "", "", "<=>"),
            8);
  EXPECT_EQ(Gravadas(),
            Advertencias("<=>", "123", "0").Linha(88, abertura.Texto(), "00000002").Texto());
}

TEST_F(GravacaoNotas, ChavesComFracaoUsamVirgula) {
  arquivo.CabecalhoV1();
  const Registro& abertura = arquivo.TR01();
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 12.5,
                                   0.25),
            8);
  EXPECT_EQ(Gravadas(),
            Advertencias("#", "12,5", "0,25").Linha(88, abertura.Texto(), "00000002").Texto());
}

TEST_F(GravacaoNotas, ChavesGrandesSemNotacaoCientifica) {
  arquivo.CabecalhoV1();
  const Registro& abertura = arquivo.TR01();
  EXPECT_EQ(validacao.Valida_Dados(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(),
                                   100000, 1234567890123.0),
            8);
  EXPECT_EQ(
      Gravadas(),
      Advertencias("#", "100000", "1234567890123").Linha(88, abertura.Texto(), "00000002").Texto());
}

TEST_F(GravacaoNotas, NumeroDaLinhaSemDigitosFicaComoEsta) {
  Registro cabecalho = arquivo.CabecalhoV1();
  cabecalho.Campo(1, 8, "ABCDEFGH");
  const std::string curta = cabecalho.ComLargura(159);
  const std::string caminho = diretorio.Arquivo("remessa.txt");
  GravaBytes(caminho, JuntaLinhas({curta}));
  EXPECT_EQ(validacao.Valida_Dados(caminho, numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(77, curta + " ", "ABCDEFGH").Texto());
}

// A record's own number is read from its columns 1-8 as a number and written with eight digits,
// however the columns write it.
TEST_F(GravacaoNotas, NumeroDaLinhaComBrancosOuSinalSaiComOitoDigitos) {
  for (const char* sequencia : {"3", "       3", "+3", "3.0"}) {
    DiretorioTemporario outro;
    ArquivoNotas linhas;
    linhas.CabecalhoV1();
    linhas.TR01();
    const Registro& nota = linhas.TR10Valido().Campo(1, 8, sequencia).Campo(21, 1, "3");
    linhas.Novo("15");
    linhas.TR98();
    linhas.TR99();
    std::string numero;
    EXPECT_EQ(validacao.Valida_Dados(linhas.Grava(outro), numero, outro.Texto()), 1) << sequencia;
    EXPECT_EQ(LeBytes(outro.Advertencias()),
              Advertencias().Linha(107, nota.Texto(), "00000003").Texto())
        << sequencia;
  }
}

TEST_F(GravacaoNotas, GravarErroDoAnfitriaoDuranteAExecucao) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  arquivo.TR10Valido();
  arquivo.Novo("15");
  arquivo.TR98();
  arquivo.TR99();
  std::vector<bool> respostas;
  validacao.Progress = [&](double&) {
    if (respostas.empty()) {
      respostas.push_back(validacao.Gravar_Erro(999));
      respostas.push_back(validacao.Gravar_Erro(5, 42));
    }
  };
  // The first event comes before line 2 is read, while the header is the current line.
  EXPECT_EQ(Valida(), 0);
  EXPECT_EQ(respostas, (std::vector<bool>{true, true}));
  const std::string cabecalho = arquivo.Linha(0).Texto();
  EXPECT_EQ(
      Gravadas(),
      Advertencias().Linha(999, cabecalho, "00000001").Linha(5, cabecalho, "00000042").Texto());
}

TEST_F(GravacaoNotas, GravarErroForaDeUmaExecucaoFalha) {
  EXPECT_FALSE(validacao.Gravar_Erro(77));
  EXPECT_FALSE(validacao.Gravar_Erro(77, 3));
}

}  // namespace
}  // namespace quorv::teste
