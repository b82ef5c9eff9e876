// Invoice files: a header, groups of notes with their items, a settlement document with its
// items and a tax assessment, each group closed with its counts, and the trailer.
#include "linhas.hpp"

namespace quorv::gerador {
namespace {

constexpr int kNotasPorGrupo = 3;

// The municipality of the header, which every issuer's registration starts with.
constexpr std::string_view kMunicipio = "123";

// A counterpart registration of 14 digits and the CNPJ that goes with it.
constexpr std::string_view kCNPJ = "11222333000181";

// A note that passes every check: issued by a producer of the header's municipality to a
// contributor of the home state (operation 5101, outgoing), with consistent amounts.
void NotaValida(Linhas& linhas, const std::string& emitente, const std::string& destinatario,
                std::uint64_t numero, const std::string& emissao) {
  linhas.Novo("10")
      .Campo(11, 10, emitente)
      .Campo(21, 1, "1")
      .Campo(22, 3, "001")
      .Campo(25, 6, Zeros(numero % 999999 + 1, 6))
      .Campo(31, 1, "S")
      .Campo(32, 8, emissao)
      .Campo(40, 14, destinatario)
      .Campo(54, 14, kCNPJ)
      .Campo(68, 3, "311")
      .Campo(71, 2, "QZ")
      .Campo(73, 1, "1")
      .Campo(74, 4, "5101")
      .Campo(78, 13, "0000000010000")
      .Campo(91, 13, "0000000001200")
      .Campo(104, 13, "0000000010000")
      .Campo(117, 13, "0000000000200")
      .Campo(130, 13, "0000000010000")
      .Campo(143, 1, " ");
}

// A note with a wrong type, series, number and situation: four warnings.
void NotaComDefeitos(Linhas& linhas, const std::string& emitente, const std::string& destinatario,
                     std::uint64_t numero, const std::string& emissao) {
  NotaValida(linhas, emitente, destinatario, numero, emissao);
  linhas.Campo(21, 1, "5").Campo(22, 3, "ABC").Campo(25, 6, "12345A").Campo(73, 1, "7");
}

void Item(Linhas& linhas, std::string_view tipo, int item) {
  linhas.Novo(tipo)
      .Campo(11, 3, Zeros(static_cast<std::uint64_t>(item), 3))
      .Campo(14, 20, "PRODUTO AGRICOLA");
}

// The settlement document of the group's notes: issued by the notes' counterpart, dated no
// later than the earliest note (the notes are outgoing).
void Liquidacao(Linhas& linhas, const std::string& destinatario, std::uint64_t numero,
                const std::string& data, bool defeitos) {
  linhas.Novo("20")
      .Campo(11, 1, defeitos ? "5" : "2")
      .Campo(12, 14, destinatario)
      .Campo(26, 2, "QZ")
      .Campo(28, 1, "1")
      .Campo(29, 3, defeitos ? "1-2" : "001")
      .Campo(32, 6, defeitos ? "12.345" : Zeros(numero % 999999 + 1, 6))
      .Campo(38, 8, data)
      .Campo(76, 13, "0000000010000")
      .Campo(89, 13, "0000000001200")
      .Campo(102, 13, "0000000010000")
      .Campo(115, 13, "0000000000200")
      .Campo(128, 13, "0000000010000")
      .Campo(141, 1, " ")
      .Campo(142, 3, defeitos ? "050" : "510");
}

// A tax assessment drawn up after the group's notes.
void Auto(Linhas& linhas, const std::string& contribuinte, std::uint64_t numero, bool defeitos) {
  linhas.Novo("40")
      .Campo(11, 10, defeitos ? "0000000000" : Zeros(numero, 10))
      .Campo(21, 8, "20240201")
      .Campo(29, 8, defeitos ? "20240131" : "20240205")
      .Campo(37, 10, contribuinte)
      .Campo(58, 14, kCNPJ)
      .Campo(72, 46, defeitos ? "" : "CONTRIBUINTE AUTUADO")
      .Campo(118, 13, defeitos ? "0000000000000" : "0000000005000");
}

void Fechamento(Linhas& linhas) {
  linhas.Novo("98");
  int coluna = 11;
  for (std::string_view tipo : {"10", "15", "20", "25", "30", "35"}) {
    linhas.Campo(coluna, 6, Zeros(linhas.QuantosDesdeZera(tipo), 6));
    coluna += 6;
  }
}

}  // namespace

void GeraNotas(std::FILE* saida, std::uint64_t quantas, bool defeitos) {
  Linhas linhas(saida, 160, 2);
  linhas.Novo("00")
      .Campo(32, 3, kMunicipio)
      .Campo(35, 25, "MUNICIPIO DE EXEMPLO")
      .Campo(60, 6, "000001")
      .Campo(66, 8, "20240215")
      .Campo(74, 10, "1.0")
      .Campo(84, 1, " ");
  linhas.Grava();

  // A clean group takes 1 + 3 x 3 + 3 + 1 + 1 lines; a faulty one 1 + 4 + 1 + 1 + 1.
  const std::uint64_t porGrupo = defeitos ? 8 : 15;
  std::uint64_t grupo = 0;
  std::uint64_t nota = 0;
  while (linhas.Escritas() + porGrupo + 1 <= quantas || grupo == 0) {
    ++grupo;
    const std::string emitente = Inscricao(std::string(kMunicipio) + "1", grupo % 100000, 10);
    const std::string destinatario = Inscricao("", 1000000 + grupo % 1000000, 14);
    linhas.Zera();
    linhas.Novo("01").Campo(11, 20, "GRUPO " + std::to_string(grupo));
    linhas.Grava();
    if (defeitos) {
      // Notes without items and a settlement without items: besides their own faults, each
      // block that ends records that it had no item.
      for (int i = 0; i < 4; ++i) {
        NotaComDefeitos(linhas, emitente, destinatario, ++nota, DataMaisDias(2024, 1, 10, i));
        linhas.Grava();
      }
      Liquidacao(linhas, destinatario, nota, "20240105", true);
      linhas.Grava();
    } else {
      for (int i = 0; i < kNotasPorGrupo; ++i) {
        NotaValida(linhas, emitente, destinatario, ++nota, DataMaisDias(2024, 1, 10, i));
        linhas.Grava();
        for (int item = 1; item <= 2; ++item) {
          Item(linhas, "15", item);
          linhas.Grava();
        }
      }
      Liquidacao(linhas, destinatario, nota, "20240105", false);
      linhas.Grava();
      for (int item = 1; item <= 2; ++item) {
        Item(linhas, "25", item);
        linhas.Grava();
      }
    }
    Auto(linhas, Inscricao("4561", grupo % 100000, 10), grupo, defeitos);
    linhas.Grava();
    Fechamento(linhas);
    linhas.Grava();
  }

  linhas.Novo("99")
      .Campo(32, 3, kMunicipio)
      .Campo(35, 25, "MUNICIPIO DE EXEMPLO")
      .Campo(60, 6, "000001")
      .Campo(66, 8, "20240215")
      .Campo(74, 10, "1.0");
  int coluna = 84;
  for (std::string_view tipo : {"10", "15", "20", "25", "30", "35"}) {
    linhas.Campo(coluna, 8, Zeros(linhas.Quantos(tipo), 8));
    coluna += 8;
  }
  linhas.Grava();
}

}  // namespace quorv::gerador
