// The registration-form warnings reader, over warnings files written line by line.
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "advertencias.hpp"
#include "arquivo_fichas.hpp"
#include "arquivos.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "quorvvalida/validacao_ficha_cadastral.hpp"
#include "registro.hpp"

namespace quorv::teste {
namespace {

// A form input line: line number, record type and request number in their columns.
std::string LinhaFicha(long long numero, std::string_view tr, std::string_view solicitacao) {
  return Registro(260).Numero(1, 8, numero).Campo(9, 3, tr).Campo(12, 10, solicitacao).Texto();
}

// The UTF-8 text followed by blanks up to the width, counted in characters.
std::string Largura(std::string_view texto, std::size_t largura) {
  std::size_t caracteres = 0;
  for (char c : texto) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++caracteres;
  }
  return std::string(texto) + std::string(largura - caracteres, ' ');
}

std::string Descricao(std::string_view texto) {
  return Largura(texto, 100);
}

// One warning as the reader shows it.
struct Aviso {
  std::string tr;
  std::string nota;
  int32_t linha;
  std::string descricao;
  bool operator==(const Aviso& outro) const {
    return tr == outro.tr && nota == outro.nota && linha == outro.linha &&
           descricao == outro.descricao;
  }
};

std::ostream& operator<<(std::ostream& saida, const Aviso& aviso) {
  return saida << "[" << aviso.tr << "|" << aviso.nota << "|" << aviso.linha << "|"
               << aviso.descricao << "]";
}

Aviso Atual(const clsQuorvAdvBDFichas& leitor) {
  return {leitor.TR(), leitor.Nota(), leitor.LINHA(), leitor.Descricao()};
}

class LeitorFichas : public ::testing::Test {
 protected:
  // Writes the warnings file and opens it.
  void Abre(std::string_view bytes) {
    GravaBytes(caminho, bytes);
    leitor.OpenStream(caminho);
  }

  // Walks the file as the callers do: use the record, test the end, move on.
  std::vector<Aviso> Percorre() {
    std::vector<Aviso> avisos;
    for (;;) {
      avisos.push_back(Atual(leitor));
      if (leitor.EndOfStream()) return avisos;
      leitor.MoveNext();
    }
  }

  DiretorioTemporario diretorio;
  std::string caminho = diretorio.Advertencias();
  clsQuorvAdvBDFichas leitor;
};

const Aviso kVazio{std::string(3, ' '), std::string(10, ' '), 0, std::string(100, ' ')};

TEST_F(LeitorFichas, ArquivoDeUmaLinhaJaEstaNoFimAoAbrir) {
  Abre(Advertencias().Linha(14, LinhaFicha(3, "110", "0000012345"), "00000003").Texto());
  EXPECT_EQ(Atual(leitor),
            (Aviso{"110", "0000012345", 3, Descricao("Mais de um TR110 na solicitação")}));
  EXPECT_EQ(leitor.TotalRecords(), 1);
  EXPECT_EQ(leitor.RecordCount(), 2);
  EXPECT_TRUE(leitor.EndOfStream());
}

TEST_F(LeitorFichas, PercorreTodasAsLinhasNaOrdem) {
  Abre(Advertencias()
           .Linha(5, LinhaFicha(2, "777", ""), "00000002")
           .Linha(125, LinhaFicha(4, "110", "0000000099"), "00000009")
           .Linha(7, LinhaFicha(12, "999", ""), "00000012")
           .Texto());
  EXPECT_EQ(leitor.TotalRecords(), 3);
  EXPECT_EQ(leitor.RecordCount(), 2);
  EXPECT_FALSE(leitor.EndOfStream());
  EXPECT_EQ(Percorre(), (std::vector<Aviso>{
                            {"777", std::string(10, ' '), 2, Descricao("TR inválido")},
                            {"110", "0000000099", 9, Descricao("Solicitação Rejeitada")},
                            {"999", std::string(10, ' '), 12, Descricao("Arquivo sem TRAILLER")},
                        }));
  EXPECT_EQ(leitor.RecordCount(), 4);
  EXPECT_EQ(leitor.TotalRecords(), 3);
}

TEST_F(LeitorFichas, RecordCountDizAProximaLinhaASerLida) {
  const std::string linha = LinhaFicha(1, "001", "");
  Abre(Advertencias().Linha(4, linha, "1").Linha(4, linha, "2").Linha(4, linha, "3").Texto());
  std::vector<int32_t> posicoes{leitor.RecordCount()};
  while (!leitor.EndOfStream()) {
    leitor.MoveNext();
    posicoes.push_back(leitor.RecordCount());
  }
  EXPECT_EQ(posicoes, (std::vector<int32_t>{2, 3, 4}));
}

TEST_F(LeitorFichas, ArquivoVazioNaoTemRegistro) {
  Abre("");
  EXPECT_EQ(leitor.TotalRecords(), 0);
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(leitor.RecordCount(), 1);
  EXPECT_EQ(Atual(leitor), kVazio);
}

TEST_F(LeitorFichas, ArquivoAusenteDeixaOLeitorSemArquivo) {
  leitor.OpenStream(diretorio.Arquivo("NAOEXISTE.TXT"));
  EXPECT_EQ(leitor.TotalRecords(), 0);
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(Atual(leitor), kVazio);
  EXPECT_THROW(leitor.RecordCount(), std::runtime_error);
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), kVazio);
}

TEST_F(LeitorFichas, RecordCountSemArquivoAbertoFalha) {
  EXPECT_THROW(leitor.RecordCount(), std::runtime_error);
  Abre(Advertencias().Linha(1, LinhaFicha(1, "001", ""), "00000001").Texto());
  EXPECT_EQ(leitor.RecordCount(), 2);
  leitor.CloseStream();
  EXPECT_THROW(leitor.RecordCount(), std::runtime_error);
  EXPECT_TRUE(leitor.EndOfStream());
  // Closing keeps the items of the last record read.
  EXPECT_EQ(leitor.TR(), "001");
  EXPECT_EQ(leitor.TotalRecords(), 1);
}

TEST_F(LeitorFichas, Codigo999DaDescricaoDeCemBrancos) {
  Abre(Advertencias()
           .Linha(5, LinhaFicha(2, "120", ""), "00000002")
           .Linha(999, LinhaFicha(3, "120", ""), "00000003")
           .Texto());
  EXPECT_EQ(leitor.Descricao(), Descricao("TR inválido"));
  leitor.MoveNext();
  EXPECT_EQ(leitor.Descricao(), std::string(100, ' '));
}

TEST_F(LeitorFichas, DescricaoTemSempreCemCaracteres) {
  // The longest text of the catalogue, and one with a trailing blank of its own.
  Abre(Advertencias()
           .Linha(31, LinhaFicha(2, "140", ""), "00000002")
           .Linha(92, LinhaFicha(3, "115", ""), "00000003")
           .Texto());
  EXPECT_EQ(leitor.Descricao(),
            Descricao("Quantidade de Proprietários vigente diferente do apresentado no TR140"));
  leitor.MoveNext();
  EXPECT_EQ(leitor.Descricao(), Descricao("Código do CNAE Fiscal inválido "));
}

TEST_F(LeitorFichas, LinhaQueNaoENumeroMantemAAnterior) {
  // A warning numbered from columns 1-8 of a line that holds no digits there.
  const std::string semNumero = Registro(260).Campo(1, 8, "ABCDEFGH").Campo(9, 3, "110").Texto();
  Abre(Advertencias()
           .Linha(3, LinhaFicha(7, "100", "0000000001"), "00000007")
           .Linha(3, semNumero, "ABCDEFGH")
           .Texto());
  EXPECT_EQ(leitor.LINHA(), 7);
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor),
            (Aviso{"110", std::string(10, ' '), 7, Descricao("Número da linha incorreta")}));
}

TEST_F(LeitorFichas, LinhaComMenosCamposMantemOQueNaoPodeDar) {
  Abre(Advertencias().Linha(14, LinhaFicha(3, "110", "0000012345"), "00000003").Texto() +
       "5#0#0\r\n" + "\r\n" + "60#0#0#00000009\r\n");
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), (Aviso{"110", "0000012345", 3, Descricao("TR inválido")}));
  // An empty line gives nothing at all.
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), (Aviso{"110", "0000012345", 3, Descricao("TR inválido")}));
  // A record field too short for the columns gives blanks; the line number is not there.
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor),
            (Aviso{"   ", std::string(10, ' '), 3, Descricao("Indicador de teste inválido")}));
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(leitor.TotalRecords(), 4);
}

TEST_F(LeitorFichas, RegistroCurtoDaOQueTemComBrancos) {
  Abre("13#0#0#00000004100123#00000004\r\n");
  EXPECT_EQ(Atual(leitor), (Aviso{"100", "123       ", 4, Descricao("Solicitação já iniciada")}));
}

TEST_F(LeitorFichas, ArquivoGravadoComPontoEVirgulaSoDaADescricao) {
  // Split at "#", a line written with ";" is one field: the code's leading number still names
  // the text, and the items of the other fields keep their values.
  Abre(Advertencias().Linha(14, LinhaFicha(3, "110", "0000012345"), "00000003").Texto() +
       Advertencias(";").Linha(5, LinhaFicha(8, "777", ""), "00000008").Texto());
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), (Aviso{"110", "0000012345", 3, Descricao("TR inválido")}));
  EXPECT_TRUE(leitor.EndOfStream());
}

TEST_F(LeitorFichas, SoPontoEVirgulaDesdeOInicio) {
  Abre(Advertencias(";").Linha(1, LinhaFicha(1, "001", ""), "00000001").Texto());
  EXPECT_EQ(Atual(leitor),
            (Aviso{"   ", std::string(10, ' '), 0, Descricao("Linha com tamanho incorreto")}));
  EXPECT_EQ(leitor.TotalRecords(), 1);
}

// A real run with ";" as its separator: split at "#", each of its lines is one field, so only
// the text of the code changes; TR, Nota and LINHA keep the values they had.
TEST_F(LeitorFichas, AdvertenciasDeUmaExecucaoComPontoEVirgula) {
  ArquivoFichas arquivo;
  arquivo.Cabecalho();
  arquivo.TR100();
  arquivo.TR110();
  arquivo.TR111().Campo(22, 2, "00");
  arquivo.DaSolicitacao("199");
  arquivo.Trailer();
  ValidacaoFichaCadastral validacao;
  validacao.Hoje = [] { return SerialDaData(2024, 6, 30); };
  std::string numero;
  validacao.Valida_Fichas(arquivo.Grava(diretorio, "fichas.txt"), numero, diretorio.Texto(), 0, 0,
                          "REM", "", ";");
  ASSERT_EQ(LeBytes(caminho), Advertencias(";")
                                  .Linha(89, arquivo.Linha(3).Texto(), "00000004")
                                  .Linha(125, arquivo.Linha(2).Texto(), "00000003")
                                  .Texto());
  leitor.OpenStream(caminho);
  EXPECT_EQ(leitor.TotalRecords(), 2);
  EXPECT_EQ(Percorre(),
            (std::vector<Aviso>{
                {"   ", std::string(10, ' '), 0, Descricao("Código de categoria inválido")},
                {"   ", std::string(10, ' '), 0, Descricao("Solicitação Rejeitada")},
            }));
}

struct CasoCodigo {
  std::string campo;
  std::string descricao;
};

TEST_F(LeitorFichas, CodigoLidoPeloSeuNumeroInicial) {
  const std::vector<CasoCodigo> casos = {
      {"5", "TR inválido"},
      {" 5", "TR inválido"},
      {"5x", "TR inválido"},
      {"5.4", "TR inválido"},
      // Halves go to the even neighbour.
      {"5.5", "Arquivo com mais de um HEADER"},
      {"6.5", "Arquivo com mais de um HEADER"},
      {"abc", ""},
      {"", ""},
      {"0", ""},
      {"-5", ""},
      {"130", ""},
  };
  for (const CasoCodigo& caso : casos) {
    Abre(caso.campo + "#0#0#" + LinhaFicha(2, "120", "") + "#00000002\r\n");
    EXPECT_EQ(leitor.Descricao(), Descricao(caso.descricao)) << caso.campo;
  }
}

TEST_F(LeitorFichas, CodigoForaDeDezesseisBitsMantemADescricao) {
  Abre(Advertencias().Linha(5, LinhaFicha(2, "120", ""), "00000002").Texto() + "40000#0#0#" +
       LinhaFicha(3, "121", "") + "#00000003\r\n");
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), (Aviso{"121", std::string(10, ' '), 3, Descricao("TR inválido")}));
}

TEST_F(LeitorFichas, NumeroDaLinhaConvertidoComArredondamento) {
  const std::string linha = LinhaFicha(2, "120", "");
  Abre("5#0#0#" + linha + "# 12 \r\n" + "5#0#0#" + linha + "#2,5\r\n" + "5#0#0#" + linha +
       "#99999999999\r\n" + "5#0#0#" + linha + "#-4\r\n");
  EXPECT_EQ(leitor.LINHA(), 12);
  leitor.MoveNext();
  EXPECT_EQ(leitor.LINHA(), 2);
  leitor.MoveNext();
  EXPECT_EQ(leitor.LINHA(), 2);
  leitor.MoveNext();
  EXPECT_EQ(leitor.LINHA(), -4);
}

TEST_F(LeitorFichas, TextoDoArquivoVoltaEmUtf8ComLarguraEmCaracteres) {
  // "AÇÃO ção" in Windows-1252: one byte per character.
  Abre("13#0#0#" + LinhaFicha(4, "100", "A\xC7\xC3O \xE7\xE3o") + "#00000004\r\n");
  EXPECT_EQ(leitor.Nota(), "AÇÃO ção  ");
}

TEST_F(LeitorFichas, LinhasTerminadasEmLFEUltimaSemFim) {
  Abre(Advertencias().Linha(5, LinhaFicha(2, "120", ""), "00000002").Texto() + "13#0#0#" +
       LinhaFicha(4, "100", "1") + "#00000004\n" + "7#0#0#" + LinhaFicha(9, "999", "") +
       "#00000009");
  EXPECT_EQ(leitor.TotalRecords(), 3);
  const std::vector<Aviso> avisos = Percorre();
  ASSERT_EQ(avisos.size(), 3u);
  EXPECT_EQ(avisos[1], (Aviso{"100", Largura("1", 10), 4, Descricao("Solicitação já iniciada")}));
  EXPECT_EQ(avisos[2], (Aviso{"999", std::string(10, ' '), 9, Descricao("Arquivo sem TRAILLER")}));
  EXPECT_EQ(leitor.RecordCount(), 4);
}

TEST_F(LeitorFichas, MoveNextDepoisDoFimNaoMudaNada) {
  Abre(Advertencias().Linha(14, LinhaFicha(3, "110", "0000012345"), "00000003").Texto());
  const Aviso antes = Atual(leitor);
  leitor.MoveNext();
  EXPECT_EQ(Atual(leitor), antes);
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(leitor.RecordCount(), 2);
}

TEST_F(LeitorFichas, ReabrirContaOutroArquivo) {
  Abre(Advertencias()
           .Linha(5, LinhaFicha(2, "120", ""), "00000002")
           .Linha(5, LinhaFicha(3, "120", ""), "00000003")
           .Texto());
  const std::string outro = diretorio.Arquivo("OUTRO.TXT");
  GravaBytes(outro, Advertencias().Linha(7, LinhaFicha(9, "999", ""), "00000009").Texto());
  leitor.OpenStream(outro);
  EXPECT_EQ(leitor.TotalRecords(), 1);
  EXPECT_EQ(leitor.RecordCount(), 2);
  EXPECT_TRUE(leitor.EndOfStream());
  EXPECT_EQ(Atual(leitor),
            (Aviso{"999", std::string(10, ' '), 9, Descricao("Arquivo sem TRAILLER")}));
}

}  // namespace
}  // namespace quorv::teste
