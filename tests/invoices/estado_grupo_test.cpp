// What a group's notes and settlement documents leave in the group's state, and its reset at each
// TR 01. The run itself is used: the state is read after it has ended.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivo_notas.hpp"
#include "arquivos.hpp"
#include "invoices/execucao_notas.hpp"
#include "teste_notas.hpp"

namespace quorv::teste {
namespace {

class EstadoDoGrupo : public ::testing::Test {
 protected:
  void SetUp() override { DefinirVerificadorInscricao(InscricaoDeTeste); }
  void TearDown() override { DefinirVerificadorInscricao(nullptr); }

  // Runs the file built so far and answers the state of its last group.
  const notas::EstadoGrupo& Executa() {
    const notas::ArgumentosNotas argumentos{
        arquivo.Grava(diretorio), diretorio.Texto(), 0, 0, "", "", "#"};
    std::string numero;
    status = execucao.Executa(argumentos, numero, {}, [] { return SerialDaData(2024, 6, 30); });
    return execucao.Grupo();
  }

  // A group of the notes as laid out by the test, each with its item, closed; then the trailer.
  void Fecha() {
    arquivo.TR98();
    arquivo.TR99();
  }

  Registro& Nota() {
    Registro& nota = arquivo.TR10Valido();
    arquivo.Novo("15");
    return nota;
  }

  DiretorioTemporario diretorio;
  ArquivoNotas arquivo;
  notas::ExecucaoNotas execucao;
  int16_t status = -1;
};

TEST_F(EstadoDoGrupo, ValoresDasNotas) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Nota().Campo(32, 8, "20240301").Campo(104, 13, "0000000000250").Campo(143, 1, "S");
  Nota().Campo(32, 8, "20240101");
  Nota().Campo(32, 8, "19941231").Campo(73, 1, "4");
  Fecha();
  const notas::EstadoGrupo& grupo = Executa();
  EXPECT_EQ(status, 1);
  EXPECT_EQ(grupo.emitenteAnterior, "1231000001");
  EXPECT_EQ(grupo.destinatarioAnterior, "4561234567    ");
  EXPECT_EQ(grupo.paisAnterior, "311");
  EXPECT_EQ(grupo.ufAnterior, "QZ");
  EXPECT_EQ(grupo.operacaoAnterior, "5101");
  EXPECT_FALSE(grupo.grupoDiverge);
  // The date of 1994 was refused and does not count.
  EXPECT_EQ(grupo.maiorEmissao, SerialDaData(2024, 3, 1));
  EXPECT_EQ(grupo.menorEmissao, SerialDaData(2024, 1, 1));
  EXPECT_EQ(grupo.totalMercadorias, 250 + 10000 + 10000);
  // The last note's situation, as written even when refused, and movement.
  EXPECT_EQ(grupo.ultimaSituacao, "4");
  EXPECT_EQ(grupo.ultimoMovimento, "S");
  EXPECT_EQ(grupo.sentidoOperacao, "S");
  // A blank income flag is not stored: the first note's stays.
  EXPECT_EQ(grupo.ultimoRendimento, "S");
}

TEST_F(EstadoDoGrupo, GrupoSemNotasValidasGuardaOsValoresIniciais) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Nota()
      .Campo(11, 10, "")
      .Campo(32, 8, "00000000")
      .Campo(40, 14, "")
      .Campo(68, 3, "")
      .Campo(71, 2, "Q")
      .Campo(74, 4, "ABCD")
      .Campo(104, 13, "")
      .Campo(143, 1, "X");
  Fecha();
  const notas::EstadoGrupo& grupo = Executa();
  EXPECT_EQ(status, 1);
  EXPECT_EQ(grupo.emitenteAnterior, "");
  EXPECT_EQ(grupo.destinatarioAnterior, "");
  EXPECT_EQ(grupo.paisAnterior, "");
  EXPECT_EQ(grupo.ufAnterior, "");
  EXPECT_EQ(grupo.operacaoAnterior, "");
  EXPECT_EQ(grupo.maiorEmissao, SerialDaData(1900, 1, 1));
  EXPECT_EQ(grupo.menorEmissao, SerialDaData(2999, 1, 1));
  EXPECT_EQ(grupo.totalMercadorias, 0);
  EXPECT_EQ(grupo.sentidoOperacao, "");
  EXPECT_EQ(grupo.ultimoRendimento, "");
}

TEST_F(EstadoDoGrupo, DirecaoDaOperacao) {
  struct Caso {
    const char* operacao;
    const char* situacao;
    const char* sentido;
  };
  for (const Caso& caso : {Caso{"1101", "2", "E"}, Caso{"4999", "2", "E"}, Caso{"5000", "2", "S"},
                           Caso{"7999", "2", "S"}, Caso{"0000", "2", "S"}}) {
    DiretorioTemporario outro;
    ArquivoNotas linhas;
    linhas.CabecalhoV1();
    linhas.TR01();
    linhas.TR10Valido().Campo(74, 4, caso.operacao).Campo(73, 1, caso.situacao);
    linhas.Novo("15");
    linhas.TR98();
    linhas.TR99();
    notas::ExecucaoNotas outra;
    std::string numero;
    const notas::ArgumentosNotas argumentos{linhas.Grava(outro), outro.Texto(), 0, 0, "", "", "#"};
    EXPECT_EQ(outra.Executa(argumentos, numero, {}, [] { return SerialDaData(2024, 6, 30); }), 0)
        << caso.operacao;
    EXPECT_EQ(outra.Grupo().sentidoOperacao, caso.sentido) << caso.operacao;
  }
}

// Which difference from the note before marks the group (the issuer's is told with 178).
struct CasoDivergencia {
  const char* nome;
  std::vector<Preenchimento> campos;
  bool diverge;
};

class DivergenciaNoGrupo : public EstadoDoGrupo,
                           public ::testing::WithParamInterface<CasoDivergencia> {};

TEST_P(DivergenciaNoGrupo, SegundaNotaDiferente) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Nota();
  Preenche(Nota(), GetParam().campos);
  Fecha();
  EXPECT_EQ(Executa().grupoDiverge, GetParam().diverge);
}

INSTANTIATE_TEST_SUITE_P(
    Notas, DivergenciaNoGrupo,
    ::testing::Values(CasoDivergencia{"NotasIguais", {}, false},
                      CasoDivergencia{"OutroEmitente", {{11, 10, "1231000002"}}, false},
                      CasoDivergencia{"OutroDestinatario", {{40, 14, "4562234567"}}, true},
                      CasoDivergencia{"OutroPaisMesmoInvalido", {{68, 3, "31"}}, true},
                      CasoDivergencia{"OutraUF", {{71, 2, "SC"}}, true},
                      CasoDivergencia{"OutraOperacao", {{74, 4, "5102"}}, true},
                      CasoDivergencia{"OutroDocumento", {{54, 14, "01234567890"}}, false}),
    [](const ::testing::TestParamInfo<CasoDivergencia>& info) { return info.param.nome; });

TEST_F(EstadoDoGrupo, NovoGrupoComecaDoZero) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Nota().Campo(32, 8, "20240301");
  Nota().Campo(40, 14, "4562234567").Campo(143, 1, "S");
  arquivo.TR20Valido().Campo(12, 14, "4562234567");
  arquivo.Novo("25");
  arquivo.TR98();
  arquivo.TR01();
  Nota().Campo(32, 8, "20240201").Campo(104, 13, "0000000000300").Campo(73, 1, "2");
  Fecha();
  const notas::EstadoGrupo& grupo = Executa();
  EXPECT_EQ(status, 0);
  EXPECT_FALSE(grupo.grupoDiverge);
  EXPECT_EQ(grupo.maiorEmissao, SerialDaData(2024, 2, 1));
  EXPECT_EQ(grupo.menorEmissao, SerialDaData(2024, 2, 1));
  EXPECT_EQ(grupo.totalMercadorias, 300);
  EXPECT_EQ(grupo.totalMercadoriasTR20, 0);
  EXPECT_EQ(grupo.destinatarioAnterior, "4561234567    ");
  EXPECT_EQ(grupo.ultimaSituacao, "2");
  EXPECT_EQ(grupo.ultimoRendimento, "");
}

TEST_F(EstadoDoGrupo, MercadoriasDosDocumentos) {
  arquivo.CabecalhoV1();
  arquivo.TR01();
  Nota();
  arquivo.TR20Valido().Campo(102, 13, "0000000000700").Campo(128, 13, "0000000000700");
  arquivo.Novo("25");
  arquivo.TR20Valido().Campo(102, 13, "-000000000001");
  arquivo.Novo("25");
  arquivo.TR20Valido();
  arquivo.Novo("25");
  Fecha();
  const notas::EstadoGrupo& grupo = Executa();
  EXPECT_EQ(status, 1);
  // The refused negative goods are not added.
  EXPECT_EQ(grupo.totalMercadoriasTR20, 700 + 10000);
  EXPECT_EQ(grupo.totalMercadorias, 10000);
}

}  // namespace
}  // namespace quorv::teste
