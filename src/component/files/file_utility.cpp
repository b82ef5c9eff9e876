// FileUtility: the parts of a Windows path found by its separators ("\" between folders, ":"
// after the drive letter, "\\" before a server, "." before the extension), on the text alone,
// and the existence of a file through a listing of its folder.
#include "quorvvalida/file_utility.hpp"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "component/files/caminhos.hpp"

namespace quorv {
namespace {

constexpr std::string_view kServidor = "\\\\";
constexpr auto kNada = std::string::npos;

// Folder listings match names without regard to case on Windows, exactly elsewhere.
#ifdef _WIN32
constexpr bool kNomesSemCaixa = true;
#else
constexpr bool kNomesSemCaixa = false;
#endif

bool Continuacao(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The index just after the UTF-8 character that starts at i.
std::size_t Seguinte(std::string_view texto, std::size_t i) {
  ++i;
  while (i < texto.size() && Continuacao(texto[i]))
    ++i;
  return i;
}

// The index where the UTF-8 character that ends just before i starts.
std::size_t Anterior(std::string_view texto, std::size_t i) {
  --i;
  while (i > 0 && Continuacao(texto[i]))
    --i;
  return i;
}

bool MesmaLetra(char a, char b) {
  if (kNomesSemCaixa) {
    if (a >= 'a' && a <= 'z') a = static_cast<char>(a - 'a' + 'A');
    if (b >= 'a' && b <= 'z') b = static_cast<char>(b - 'a' + 'A');
  }
  return a == b;
}

// The listing's wildcards: "*" stands for any run of characters, "?" for one character.
bool Corresponde(std::string_view padrao, std::string_view nome) {
  std::size_t p = 0;
  std::size_t n = 0;
  std::size_t estrela = kNada;
  std::size_t retomada = 0;
  while (n < nome.size()) {
    if (p < padrao.size() && padrao[p] == '*') {
      estrela = p++;
      retomada = n;
    } else if (p < padrao.size() && padrao[p] == '?') {
      ++p;
      n = Seguinte(nome, n);
    } else if (p < padrao.size() && MesmaLetra(padrao[p], nome[n])) {
      ++p;
      ++n;
    } else if (estrela != kNada) {
      p = estrela + 1;
      retomada = Seguinte(nome, retomada);
      n = retomada;
    } else {
      return false;
    }
  }
  while (p < padrao.size() && padrao[p] == '*')
    ++p;
  return p == padrao.size();
}

}  // namespace

std::string FileUtility::GetDrive(const std::string& sArquivoRemessa) const {
  const std::string& s = sArquivoRemessa;
  if (s.compare(0, kServidor.size(), kServidor) == 0) {
    // The server part: up to the next "\" after the leading two, or the whole path.
    const std::size_t barra = s.find('\\', kServidor.size());
    return barra == kNada ? s : s.substr(0, barra);
  }
  const std::size_t doisPontos = s.find(':');
  // A ":" at the very start has no drive letter before it: there is nothing to take.
  if (doisPontos == kNada || doisPontos == 0) return {};
  const std::size_t letra = Anterior(s, doisPontos);
  return s.substr(letra, doisPontos + 1 - letra);
}

std::string FileUtility::GetFileName(const std::string& sArquivoRemessa) const {
  return GetFileName(sArquivoRemessa, false);
}

std::string FileUtility::GetFileName(const std::string& sArquivoRemessa,
                                     const bool& bWithExtension) const {
  const std::string& s = sArquivoRemessa;
  const std::size_t barra = s.rfind('\\');
  const std::size_t ponto = s.rfind('.');
  if (barra == kNada) {
    // A bare name without a dot gives nothing; this is how hosts have always received it.
    if (ponto == kNada) return {};
    return bWithExtension ? s : s.substr(0, ponto);
  }
  if (bWithExtension || ponto == kNada) return s.substr(barra + 1);
  // A dot in a folder name before the last "\" would make the name's length negative: the
  // result stays empty.
  if (ponto < barra) return {};
  return s.substr(barra + 1, ponto - barra - 1);
}

std::string FileUtility::GetFileExtension(const std::string& sArquivoRemessa) const {
  const std::size_t ponto = sArquivoRemessa.rfind('.');
  return ponto == kNada ? std::string() : sArquivoRemessa.substr(ponto + 1);
}

std::string FileUtility::GetPath(const std::string& sArquivoRemessa) const {
  return GetPath(sArquivoRemessa, false);
}

std::string FileUtility::GetPath(const std::string& sArquivoRemessa,
                                 const bool& bWithDevice) const {
  const std::string& s = sArquivoRemessa;
  const std::size_t ultima = s.rfind('\\');
  if (ultima == kNada) return {};
  if (bWithDevice) return s.substr(0, ultima);
  const std::size_t primeira = s.find('\\');
  // A file right under the root gives the file name itself, as hosts have always received it.
  if (ultima == primeira) return s.substr(primeira + 1);
  return s.substr(primeira + 1, ultima - primeira - 1);
}

bool FileUtility::FileExists(const std::string& sArquivoRemessa) const {
  try {
    // An empty path names no file (a listing of it would list the current folder instead).
    if (sArquivoRemessa.empty()) return false;
    const std::filesystem::path caminho = caminhos::Caminho(sArquivoRemessa);
    const std::string padrao = caminho.filename().u8string();
    if (padrao.empty()) return false;
    std::filesystem::path pasta = caminho.parent_path();
    if (pasta.empty()) pasta = ".";
    std::error_code erro;
    std::filesystem::directory_iterator entrada(pasta, erro);
    for (; !erro && entrada != std::filesystem::directory_iterator(); entrada.increment(erro)) {
      // A listing of files leaves folders out.
      std::error_code tipo;
      if (entrada->is_directory(tipo)) continue;
      if (Corresponde(padrao, entrada->path().filename().u8string())) return true;
    }
    return false;
  } catch (...) {
    return false;
  }
}

}  // namespace quorv
