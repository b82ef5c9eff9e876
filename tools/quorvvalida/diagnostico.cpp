#include "diagnostico.hpp"

#include <cstdio>
#include <filesystem>
#include <memory>

#include <fmt/core.h>

namespace quorv::ferramenta {
namespace {

// Bytes read from the file at a time.
constexpr std::size_t kBloco = std::size_t{64} * 1024;

namespace fs = std::filesystem;

constexpr std::uint64_t kLimiteLeitura = 64ull << 20;
// Room kept for the first line of a wrong length: a line of 260 characters takes at most 1040
// bytes in UTF-8.
constexpr std::size_t kLimiteLinha = 4096;

std::size_t Largura(Tipo tipo) {
  return tipo == Tipo::kNotas ? 160 : 260;
}

// The characters of valid UTF-8 text that holds at least one character of several bytes; empty
// when the bytes are plain ASCII or not UTF-8.
std::optional<std::size_t> CaracteresUtf8(std::string_view bytes) {
  std::size_t caracteres = 0;
  bool multiplos = false;
  for (std::size_t i = 0; i < bytes.size(); ++caracteres) {
    const auto primeiro = static_cast<unsigned char>(bytes[i]);
    std::size_t tamanho = 1;
    if (primeiro >= 0xF0 && primeiro <= 0xF4) {
      tamanho = 4;
    } else if (primeiro >= 0xE0) {
      tamanho = primeiro <= 0xEF ? 3 : 0;
    } else if (primeiro >= 0xC2) {
      tamanho = 2;
    } else if (primeiro >= 0x80) {
      tamanho = 0;
    }
    if (tamanho == 0 || i + tamanho > bytes.size()) return std::nullopt;
    for (std::size_t j = 1; j < tamanho; ++j) {
      if ((static_cast<unsigned char>(bytes[i + j]) & 0xC0) != 0x80) return std::nullopt;
    }
    multiplos = multiplos || tamanho > 1;
    i += tamanho;
  }
  if (!multiplos) return std::nullopt;
  return caracteres;
}

// The file's path with a mark before its extension: the name a converted copy can take.
std::string Convertido(const std::string& caminho, const char* marca) {
  const fs::path original = fs::u8path(caminho);
  fs::path copia = original;
  copia.replace_filename(original.stem().u8string() + "-" + marca +
                         original.extension().u8string());
  return copia.u8string();
}

// What the first bytes of the file tell.
struct Leitura {
  std::string inicio;           // the first bytes, up to 4
  std::uint64_t primeira = 0;   // length of the first line, without its line end
  bool primeiraTemFim = false;  // a LF ended the first line
  bool primeiraComCR = false;   // a CR stood right before that LF
  bool crSolto = false;         // a CR not followed by LF within the first line
  std::string errada;           // the first line of a wrong length (its first bytes)
  bool achouErrada = false;
  std::string fim;  // the last bytes, up to 4
};

Leitura Le(const std::string& caminho, std::size_t largura) {
  Leitura leitura;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> arquivo(
      std::fopen(fs::u8path(caminho).c_str(), "rb"), &std::fclose);
  if (!arquivo) return leitura;
  std::unique_ptr<char[]> bloco(new char[kBloco]);
  std::string linha;
  std::uint64_t comprimento = 0;
  std::uint64_t lidos = 0;
  std::size_t numero = 0;
  bool anteriorCR = false;
  while (lidos < kLimiteLeitura && !leitura.achouErrada) {
    const std::size_t quantos = std::fread(bloco.get(), 1, kBloco, arquivo.get());
    if (quantos == 0) break;
    if (lidos == 0) leitura.inicio.assign(bloco.get(), std::min<std::size_t>(4, quantos));
    lidos += quantos;
    for (std::size_t i = 0; i < quantos && !leitura.achouErrada; ++i) {
      const char c = bloco[i];
      if (c != '\n') {
        if (numero == 0 && anteriorCR) leitura.crSolto = true;
        anteriorCR = c == '\r';
        ++comprimento;
        if (linha.size() < kLimiteLinha) linha.push_back(c);
        continue;
      }
      // A CR right before the LF belongs to the line end.
      if (anteriorCR) {
        --comprimento;
        if (!linha.empty() && linha.back() == '\r') linha.pop_back();
      }
      if (numero == 0) {
        leitura.primeira = comprimento;
        leitura.primeiraTemFim = true;
        leitura.primeiraComCR = anteriorCR;
      }
      if (comprimento != largura) {
        leitura.errada = linha;
        leitura.achouErrada = true;
      }
      ++numero;
      comprimento = 0;
      linha.clear();
      anteriorCR = false;
    }
  }
  if (numero == 0) {
    leitura.primeira = comprimento;
    if (anteriorCR) leitura.crSolto = true;
  }
  if (!leitura.achouErrada && comprimento != 0 && comprimento != largura) {
    leitura.errada = linha;
    leitura.achouErrada = true;
  }
  if (std::fseek(arquivo.get(), -4, SEEK_END) == 0) {
    char ultimos[4];
    leitura.fim.assign(ultimos, std::fread(ultimos, 1, sizeof ultimos, arquivo.get()));
  }
  return leitura;
}

}  // namespace

std::string AspasDoShell(const std::string& texto) {
  std::string resultado = "'";
  for (const char c : texto) {
    if (c == '\'') {
      resultado += "'\\''";
    } else {
      resultado += c;
    }
  }
  return resultado + "'";
}

std::optional<Diagnostico> Diagnostica(const std::string& caminho, Tipo tipo) {
  const std::size_t largura = Largura(tipo);
  const Leitura leitura = Le(caminho, largura);
  const std::string origem = AspasDoShell(caminho);
  const std::string_view inicio = leitura.inicio;

  if (inicio.rfind("\xFF\xFE", 0) == 0 || inicio.rfind("\xFE\xFF", 0) == 0) {
    return Diagnostico{"utf16",
                       fmt::format("o arquivo está em UTF-16, e a validação espera Windows-1252; "
                                   "converta-o com: iconv -f UTF-16 -t WINDOWS-1252 {} > {}",
                                   origem, AspasDoShell(Convertido(caminho, "cp1252")))};
  }
  if (inicio.rfind("\xEF\xBB\xBF", 0) == 0) {
    // The mark itself is UTF-8: whether the rest is, is told by the first line without it.
    const std::string_view errada = leitura.errada;
    const bool utf8 =
        CaracteresUtf8(errada.rfind("\xEF\xBB\xBF", 0) == 0 ? errada.substr(3) : errada)
            .has_value();
    return Diagnostico{
        "bom_utf8",
        fmt::format("o arquivo começa com a marca de ordem de bytes (BOM) do UTF-8, que não faz "
                    "parte do primeiro registro; tire-a{} com: tail -c +4 {}{} > {}",
                    utf8 ? " e converta o arquivo para Windows-1252" : "", origem,
                    utf8 ? " | iconv -f UTF-8 -t WINDOWS-1252" : "",
                    AspasDoShell(Convertido(caminho, utf8 ? "cp1252" : "sem-bom")))};
  }
  const std::size_t outra = tipo == Tipo::kNotas ? 260 : 160;
  if (leitura.primeira == outra) {
    const char* comando = tipo == Tipo::kNotas ? "fichas" : "notas";
    return Diagnostico{
        "outro_tipo",
        fmt::format("a primeira linha tem {} caracteres, como num arquivo de {}; valide-o com: "
                    "quorvvalida {} {}",
                    outra, tipo == Tipo::kNotas ? "ficha cadastral" : "notas fiscais de produtor",
                    comando, origem)};
  }
  if (leitura.achouErrada) {
    if (const auto caracteres = CaracteresUtf8(leitura.errada);
        caracteres && *caracteres == largura) {
      return Diagnostico{
          "utf8", fmt::format("o arquivo está em UTF-8: os acentos ocupam dois bytes e as linhas "
                              "passam de {} caracteres; converta-o para Windows-1252 com: iconv "
                              "-f UTF-8 -t WINDOWS-1252 {} > {}",
                              largura, origem, AspasDoShell(Convertido(caminho, "cp1252")))};
    }
  }
  if (leitura.crSolto && !leitura.primeiraTemFim) {
    return Diagnostico{
        "fim_de_linha_cr",
        fmt::format("as linhas terminam só com CR (retorno de carro), e o arquivo é lido como "
                    "uma linha só; converta os fins de linha com: tr '\\r' '\\n' < {}{} > {}",
                    origem, tipo == Tipo::kNotas ? " | sed 's/$/\\r/'" : "",
                    AspasDoShell(Convertido(caminho, "linhas")))};
  }
  if (tipo == Tipo::kNotas && leitura.primeiraTemFim && !leitura.primeiraComCR &&
      leitura.primeira == largura) {
    return Diagnostico{
        "fim_de_linha_lf",
        fmt::format("as linhas terminam só com LF, e cada linha de notas deve terminar com CR "
                    "LF (162 bytes por linha); converta os fins de linha com: sed 's/$/\\r/' {} "
                    "> {}",
                    origem, AspasDoShell(Convertido(caminho, "crlf")))};
  }
  const std::string_view fim = leitura.fim;
  const bool linhaVazia = (fim.size() >= 4 && fim.substr(fim.size() - 4) == "\r\n\r\n") ||
                          (fim.size() >= 2 && fim.substr(fim.size() - 2) == "\n\n");
  if (tipo == Tipo::kNotas && linhaVazia) {
    return Diagnostico{
        "linha_vazia_no_fim",
        fmt::format("o arquivo termina com uma linha vazia depois do último registro; tire-a "
                    "com: sed -i '$ d' {}",
                    origem)};
  }
  return std::nullopt;
}

}  // namespace quorv::ferramenta
