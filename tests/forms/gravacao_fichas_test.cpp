// How each warning line of a form run is written, and the final procedures.
#include <vector>

#include "teste_fichas.hpp"

namespace quorv::teste {
namespace {

using GravacaoFichas = TesteFichas;

// A request whose name record has no person before it: warning 19, then 125 at its closing.
void SolicitacaoRejeitada(ArquivoFichas& arquivo) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.NomePessoa("121");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
}

TEST_F(GravacaoFichas, ArgumentosOmitidosDaoChavesZeroESeparadorCerquilha) {
  arquivo.Cabecalho();
  const Registro& tipo = arquivo.Novo("008");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), "5#0#0#" + tipo.Texto() + "#00000002\r\n");
}

TEST_F(GravacaoFichas, ArgumentosOmitidosDaoOrigemEServidorVazios) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.Pessoa("120");
  // A city hall code with a letter and a blank name: without an origin the code is not
  // examined, and without a server name the name is.
  arquivo.NomePessoa("121").Campo(22, 8, "0000001A").Campo(64, 46, "");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto()), 8);
  EXPECT_EQ(Gravadas(), Esperado({{108, 5}, {125, 3}}));
}

TEST_F(GravacaoFichas, ChavesDoChamador) {
  arquivo.Cabecalho();
  const Registro& tipo = arquivo.Novo("008");
  EXPECT_EQ(
      validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 123, 0),
      8);
  EXPECT_EQ(Gravadas(), "5#123#0#" + tipo.Texto() + "#00000002\r\n");
}

TEST_F(GravacaoFichas, ChavesComFracaoUsamVirgula) {
  arquivo.Cabecalho();
  const Registro& tipo = arquivo.Novo("008");
  EXPECT_EQ(validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(),
                                    12.5, 1234567890123.0),
            8);
  EXPECT_EQ(Gravadas(),
            Advertencias("#", "12,5", "1234567890123").Linha(5, tipo.Texto(), "00000002").Texto());
}

TEST_F(GravacaoFichas, SeparadorDoChamadorECerquilhaTrocadaPorBranco) {
  arquivo.Cabecalho();
  Registro& abertura = arquivo.TR100();
  abertura.Campo(40, 2, "##");
  const std::string comBranco = Registro(abertura).Campo(40, 2, "  ").Texto();
  EXPECT_EQ(validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 0,
                                    0, "", "", ";"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias(";").Linha(129, comBranco, "00000002").Texto());
}

TEST_F(GravacaoFichas, SolicitacaoRejeitadaVaiContraALinhaDoTR110) {
  SolicitacaoRejeitada(arquivo);
  EXPECT_EQ(validacao.Valida_Fichas(arquivo.Grava(diretorio), numeroRemessa, diretorio.Texto(), 7,
                                    8, "", "", "|"),
            8);
  EXPECT_EQ(Gravadas(), Advertencias("|", "7", "8")
                            .Linha(19, arquivo.Linha(3).Texto(), "00000004")
                            .Linha(125, arquivo.Linha(2).Texto(), "00000003")
                            .Texto());
}

TEST_F(GravacaoFichas, SolicitacaoSemTR110EmObjetoNovo) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR111();
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  EXPECT_EQ(Valida(), 8);
  // No establishment line was ever read by this object: its copy and its number are empty.
  EXPECT_EQ(Gravadas(), Esperado({{15, 3}}) + "125#0#0##\r\n");
}

TEST_F(GravacaoFichas, LinhaDoTR110FicaDeUmaExecucaoParaAOutra) {
  arquivo.Cabecalho();
  arquivo.TR100();
  const Registro& estabelecimento = arquivo.TR110();
  arquivo.DaSolicitacao("199");
  EXPECT_EQ(Valida(), 8);

  ArquivoFichas outro;
  outro.Cabecalho();
  outro.TR100();
  const Registro& categoria = outro.TR111();
  outro.DaSolicitacao("199");
  outro.Trailer();
  EXPECT_EQ(validacao.Valida_Fichas(outro.Grava(diretorio, "outro.txt"), numeroRemessa,
                                    diretorio.Texto()),
            8);
  EXPECT_EQ(Gravadas(), Advertencias()
                            .Linha(15, categoria.Texto(), "00000003")
                            .Linha(125, estabelecimento.Texto(), "00000003")
                            .Texto());
}

TEST_F(GravacaoFichas, AnfitriaoGravaDuranteAExecucao) {
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  std::vector<bool> respostas;
  int eventos = 0;
  validacao.FichaProgress = [&](double&) {
    // The fourth event comes before line 4 is read, while line 3 (TR 110) is the current line.
    if (++eventos == 4) {
      respostas.push_back(validacao.Gravar_Erro_Ficha(999));
      respostas.push_back(validacao.Gravar_Erro_Ficha(5, 42));
      respostas.push_back(validacao.Gravar_Erro_FichaTR110(125));
      respostas.push_back(validacao.Gravar_Erro_FichaTR110(126, 7));
    }
  };
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(respostas, (std::vector<bool>{true, true, true, true}));
  const std::string estabelecimento = arquivo.Linha(2).Texto();
  EXPECT_EQ(Gravadas(), Advertencias()
                            .Linha(999, estabelecimento, "00000003")
                            .Linha(5, estabelecimento, "00000042")
                            .Linha(125, estabelecimento, "00000003")
                            .Linha(126, estabelecimento, "00000007")
                            .Texto());
}

TEST_F(GravacaoFichas, GravarForaDeUmaExecucaoFalha) {
  EXPECT_FALSE(validacao.Gravar_Erro_Ficha(12));
  EXPECT_FALSE(validacao.Gravar_Erro_Ficha(12, 3));
  EXPECT_FALSE(validacao.Gravar_Erro_FichaTR110(125));
  EXPECT_FALSE(validacao.Gravar_Erro_FichaTR110(125, 3));
}

TEST_F(GravacaoFichas, ProcedimentosFinaisApagamSoSemAdvertencias) {
  GravaBytes(diretorio.Advertencias(), "antiga\r\n");
  EXPECT_FALSE(validacao.Procedimentos_Finais_Fichas(diretorio.Texto()));
  EXPECT_FALSE(diretorio.TemAdvertencias());
  // Safe to call again, with nothing left to delete.
  EXPECT_FALSE(validacao.Procedimentos_Finais_Fichas(diretorio.Texto()));

  SolicitacaoRejeitada(arquivo);
  EXPECT_EQ(Valida(), 8);
  const std::string gravadas = Gravadas();
  EXPECT_FALSE(gravadas.empty());
  EXPECT_FALSE(validacao.Procedimentos_Finais_Fichas(diretorio.Texto()));
  EXPECT_EQ(Gravadas(), gravadas);
}

TEST_F(GravacaoFichas, ProcedimentosFinaisSemDiretorioNaoApagamNada) {
  EXPECT_FALSE(validacao.Procedimentos_Finais_Fichas(""));
}

TEST_F(GravacaoFichas, NumeroDaLinhaVemDaLinhaCopiada) {
  arquivo.Cabecalho();
  arquivo.TR100();
  // Read as 3 by its leading digits, the number is written as the line holds it.
  Registro& ultima = arquivo.Novo("010");
  ultima.Campo(1, 8, "0000003X");
  EXPECT_EQ(Valida(), 8);
  EXPECT_EQ(Gravadas(), Advertencias().Linha(7, ultima.Texto(), "0000003X").Texto());
}

}  // namespace
}  // namespace quorv::teste
