// Both warnings readers over files that are not what a run writes: empty, binary, long lines,
// other line ends and separators, bytes above 127, paths that name no file. A reader raises
// nothing here; an item that a line cannot give keeps its value.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"
#include "invoices/messages/cls_quorv_adv_bd.hpp"
#include "quorvvalida/cls_quorv_adv_bd_fichas.hpp"
#include "quorvvalida/cls_quorv_msg.hpp"
#include "quorvvalida/cls_quorv_msg_fichas.hpp"
#include "registro.hpp"
#include "robustez.hpp"

namespace quorv::teste {
namespace {

// The invoice reader: record type in columns 9-10 of the copied line, invoice number in 11-30.
struct DeNotas {
  using Leitor = clsQuorvAdvBD;
  static constexpr int kColunaTR = 9;
  static constexpr int kLarguraTR = 2;
  static constexpr int kColunaNota = 11;
  static constexpr int kLarguraNota = 20;
  static std::string Mensagem(int16_t codigo) { return clsQuorvMsg().MensagemAdvertencia(codigo); }
};

// The form reader: record type in columns 9-11, request number in 12-21.
struct DeFichas {
  using Leitor = clsQuorvAdvBDFichas;
  static constexpr int kColunaTR = 9;
  static constexpr int kLarguraTR = 3;
  static constexpr int kColunaNota = 12;
  static constexpr int kLarguraNota = 10;
  static std::string Mensagem(int16_t codigo) {
    return clsQuorvMsgFichas().MensagemAdvertenciaFichas(codigo);
  }
};

// The current record of a reader.
struct Aviso {
  std::string tr;
  std::string nota;
  int32_t linha = 0;
  std::string descricao;

  bool operator==(const Aviso& outro) const {
    return tr == outro.tr && nota == outro.nota && linha == outro.linha &&
           descricao == outro.descricao;
  }
};

void PrintTo(const Aviso& aviso, std::ostream* saida) {
  *saida << "[" << aviso.tr << "|" << aviso.nota << "|" << aviso.linha << "|" << aviso.descricao
         << "]";
}

// The UTF-8 text followed by blanks up to 100 characters.
std::string Cem(std::string texto) {
  std::size_t caracteres = 0;
  for (char c : texto) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++caracteres;
  }
  return texto + std::string(100 - caracteres, ' ');
}

template <typename Tipo>
class Leitores : public ::testing::Test {
 protected:
  void Abre(std::string_view bytes) { leitor.OpenStream(entradas.Grava(caminho, bytes)); }

  void TearDown() override { entradas.Confere(); }

  Aviso Atual() const { return {leitor.TR(), leitor.Nota(), leitor.LINHA(), leitor.Descricao()}; }

  // Walks the file as the callers do: use the record, test the end, move on.
  std::vector<Aviso> Percorre() {
    std::vector<Aviso> avisos;
    for (;;) {
      avisos.push_back(Atual());
      if (leitor.EndOfStream()) return avisos;
      leitor.MoveNext();
    }
  }

  // A copied input line of the given length holding the record type and the identification.
  static std::string Linha(std::size_t largura, std::string_view tr, std::string_view nota) {
    return Registro(largura)
        .Numero(1, 8, 3)
        .Campo(Tipo::kColunaTR, Tipo::kLarguraTR, tr.substr(0, Tipo::kLarguraTR))
        .Campo(Tipo::kColunaNota, Tipo::kLarguraNota, nota.substr(0, Tipo::kLarguraNota))
        .Texto();
  }

  static Aviso Vazio() {
    return {std::string(Tipo::kLarguraTR, ' '), std::string(Tipo::kLarguraNota, ' '), 0,
            std::string(100, ' ')};
  }

  static Aviso Esperado(std::string_view tr, std::string_view nota, int32_t linha, int16_t codigo) {
    std::string tipo(tr.substr(0, Tipo::kLarguraTR));
    tipo.resize(Tipo::kLarguraTR, ' ');
    std::string numero(nota.substr(0, Tipo::kLarguraNota));
    numero.resize(Tipo::kLarguraNota, ' ');
    return {tipo, numero, linha, Cem(Tipo::Mensagem(codigo))};
  }

  DiretorioTemporario diretorio;
  std::string caminho = diretorio.Advertencias();
  Entradas entradas;
  typename Tipo::Leitor leitor;
};

using TiposDeLeitor = ::testing::Types<DeNotas, DeFichas>;
TYPED_TEST_SUITE(Leitores, TiposDeLeitor);

TYPED_TEST(Leitores, ArquivoVazio) {
  this->Abre("");
  EXPECT_EQ(this->leitor.TotalRecords(), 0);
  EXPECT_TRUE(this->leitor.EndOfStream());
  EXPECT_EQ(this->leitor.RecordCount(), 1);
  EXPECT_EQ(this->Atual(), this->Vazio());
}

TYPED_TEST(Leitores, ArquivoDeUmByteSoTemOCodigo) {
  this->Abre("7");
  EXPECT_EQ(this->leitor.TotalRecords(), 1);
  EXPECT_TRUE(this->leitor.EndOfStream());
  EXPECT_EQ(this->leitor.RecordCount(), 2);
  EXPECT_EQ(this->Atual(), this->Esperado("", "", 0, 7));
}

TYPED_TEST(Leitores, ArquivoBinario) {
  // A code of NUL bytes is no number (code 0); the record and its identification are NUL bytes.
  const std::string nulos(40, '\0');
  this->Abre(std::string("\0\x01#\0#\0#", 7) + nulos + "#00000012\r\n");
  EXPECT_EQ(this->leitor.TotalRecords(), 1);
  EXPECT_EQ(this->Atual(), this->Esperado(nulos, nulos, 12, 0));
}

TYPED_TEST(Leitores, BytesSemSentidoNaoFazemFalhar) {
  std::string binario;
  for (int i = 0; i < 4096; ++i)
    binario += static_cast<char>((i * 7) % 256);
  this->Abre(binario);
  // 4096 bytes holding 16 LF: 17 lines, the last without an end.
  EXPECT_EQ(this->leitor.TotalRecords(), 17);
  EXPECT_EQ(this->Percorre().size(), 17u);
  EXPECT_TRUE(this->leitor.EndOfStream());
}

TYPED_TEST(Leitores, LinhasDeQualquerComprimento) {
  // Code, keys and separators take 6 bytes; the separator and the line number 9.
  for (const std::size_t comprimento : {159u, 161u, 100000u}) {
    const std::string registro = this->Linha(comprimento - 15, "110", "12345678901ABC000123");
    const std::string linha = "5#0#0#" + registro + "#00000007";
    ASSERT_EQ(linha.size(), comprimento);
    const std::string caminho =
        this->diretorio.Arquivo("ADVERTENCIAS-" + std::to_string(comprimento) + ".TXT");
    // A reader of its own, so that no item comes from the line before.
    typename TypeParam::Leitor leitor;
    leitor.OpenStream(this->entradas.Grava(caminho, linha + "\r\n"));
    EXPECT_EQ(leitor.TotalRecords(), 1) << comprimento;
    EXPECT_TRUE(leitor.EndOfStream()) << comprimento;
    EXPECT_EQ((Aviso{leitor.TR(), leitor.Nota(), leitor.LINHA(), leitor.Descricao()}),
              this->Esperado("110", "12345678901ABC000123", 7, 5))
        << comprimento;
  }
}

TYPED_TEST(Leitores, FinsDeLinhaSoLFMisturadosESemFim) {
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#0#0#" + registro + "#00000001\n" + "6#0#0#" + registro + "#00000002\r\n" +
             "7#0#0#" + registro + "#00000003");
  EXPECT_EQ(this->leitor.TotalRecords(), 3);
  const std::vector<Aviso> esperado = {this->Esperado("110", "0000000042", 1, 5),
                                       this->Esperado("110", "0000000042", 2, 6),
                                       this->Esperado("110", "0000000042", 3, 7)};
  EXPECT_EQ(this->Percorre(), esperado);
}

TYPED_TEST(Leitores, FimDeLinhaSoCRFazUmaLinhaSo) {
  // Split at "#", the one line gives the first warning's code and record; its line number field
  // runs into the next warning's code and is no number.
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#0#0#" + registro + "#00000001\r" + "6#0#0#" + registro + "#00000002\r");
  EXPECT_EQ(this->leitor.TotalRecords(), 1);
  EXPECT_TRUE(this->leitor.EndOfStream());
  EXPECT_EQ(this->Atual(), this->Esperado("110", "0000000042", 0, 5));
}

TYPED_TEST(Leitores, LinhaVaziaNoFimNaoMudaOAviso) {
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#0#0#" + registro + "#00000001\r\n\r\n");
  EXPECT_EQ(this->leitor.TotalRecords(), 2);
  const Aviso primeiro = this->Esperado("110", "0000000042", 1, 5);
  EXPECT_EQ(this->Percorre(), std::vector<Aviso>({primeiro, primeiro}));
}

TYPED_TEST(Leitores, BytesAltosVoltamEmUtf8) {
  // Windows-1252: C7 is "Ç", 80 "€", E9 "é".
  const std::string registro = Registro(260)
                                   .Campo(1, 260, BytesAltos(260, 3))
                                   .Campo(9, 3, "\xC7\x80\xE9")
                                   .Campo(TypeParam::kColunaNota, TypeParam::kLarguraNota,
                                          std::string(TypeParam::kLarguraNota, '\xE9'))
                                   .Texto();
  this->Abre("5\xE9#0#0#" + registro + "#00000009\r\n");
  std::string nota;
  for (int i = 0; i < TypeParam::kLarguraNota; ++i)
    nota += "é";
  const std::string tr = TypeParam::kLarguraTR == 2 ? "Ç€" : "Ç€é";
  EXPECT_EQ(this->Atual(), (Aviso{tr, nota, 9, Cem(TypeParam::Mensagem(5))}));
}

TYPED_TEST(Leitores, NumeroDaLinhaQueNaoENumeroMantemOAnterior) {
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#0#0#" + registro + "#00000004\r\n" + "6#0#0#" + registro + "#0000001A\r\n" +
             "7#0#0#" + registro + "#0000000\xE9\r\n");
  EXPECT_EQ(this->Percorre(), std::vector<Aviso>({this->Esperado("110", "0000000042", 4, 5),
                                                  this->Esperado("110", "0000000042", 4, 6),
                                                  this->Esperado("110", "0000000042", 4, 7)}));
}

TYPED_TEST(Leitores, CaminhoQueEDiretorio) {
  std::filesystem::create_directory(std::filesystem::u8path(this->caminho));
  this->leitor.OpenStream(this->caminho);
  EXPECT_EQ(this->leitor.TotalRecords(), 0);
  EXPECT_TRUE(this->leitor.EndOfStream());
  EXPECT_EQ(this->Atual(), this->Vazio());
  this->leitor.MoveNext();
  this->leitor.CloseStream();
  EXPECT_EQ(this->Atual(), this->Vazio());
  EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::u8path(this->caminho)));
}

TYPED_TEST(Leitores, CaminhoInexistente) {
  this->leitor.OpenStream(this->diretorio.Arquivo("nao/existe/ADVERTENCIAS.TXT"));
  EXPECT_EQ(this->leitor.TotalRecords(), 0);
  EXPECT_TRUE(this->leitor.EndOfStream());
  this->leitor.MoveNext();
  EXPECT_EQ(this->Atual(), this->Vazio());
}

TYPED_TEST(Leitores, SeparadorDeVariosCaracteresSoDaOCodigo) {
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5<=>0<=>0<=>" + registro + "<=>00000007\r\n");
  EXPECT_EQ(this->Atual(), this->Esperado("", "", 0, 5));
}

TYPED_TEST(Leitores, SeparadorDuploDaCamposVazios) {
  // Split at "#", "##" gives an empty field between every two: the record field is empty and the
  // line number field holds the processing key.
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#0#3#" + registro + "#00000001\r\n" + "6##0##3##" + registro + "##00000002\r\n");
  EXPECT_EQ(this->Percorre(), std::vector<Aviso>({this->Esperado("110", "0000000042", 1, 5),
                                                  this->Esperado("", "", 3, 6)}));
}

TYPED_TEST(Leitores, ChavesComParteFracionaria) {
  const std::string registro = this->Linha(160, "110", "0000000042");
  this->Abre("5#12,5#-0,25#" + registro + "#00000007\r\n");
  EXPECT_EQ(this->Atual(), this->Esperado("110", "0000000042", 7, 5));
}

TYPED_TEST(Leitores, CaminhoComBrancosEAcentos) {
  const std::string pasta = this->diretorio.Arquivo("advertências de ação");
  std::filesystem::create_directory(std::filesystem::u8path(pasta));
  const std::string registro = this->Linha(160, "110", "0000000042");
  const std::string caminho = pasta + "/ADVERTÊNCIAS ç.TXT";
  this->leitor.OpenStream(this->entradas.Grava(caminho, "5#0#0#" + registro + "#00000007\r\n"));
  EXPECT_EQ(this->leitor.TotalRecords(), 1);
  EXPECT_EQ(this->Atual(), this->Esperado("110", "0000000042", 7, 5));
}

}  // namespace
}  // namespace quorv::teste
