// A host program: validates a small invoice file and shows a warning's text.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <quorvvalida/quorvvalida.hpp>

namespace {

std::string Linha(const std::string& sequencia, const std::string& corpo) {
  std::string linha = sequencia + corpo;
  linha.resize(160, ' ');
  return linha + "\r\n";
}

}  // namespace

int main() {
  const std::filesystem::path diretorio =
      std::filesystem::temp_directory_path() / "quorvvalida-anfitriao";
  std::filesystem::create_directories(diretorio);
  const std::filesystem::path arquivo = diretorio / "remessa.txt";
  {
    std::ofstream saida(arquivo, std::ios::binary);
    saida << Linha("00000001", "00");
  }
  quorv::Validacao validacao;
  std::string numero;
  const int16_t status = validacao.Valida_Dados(arquivo.string(), numero, diretorio.string());
  const bool comAdvertencias = std::filesystem::exists(diretorio / "ADVERTENCIAS.TXT");
  const int16_t codigo = 104;
  const std::string texto = quorv::clsQuorvMsg().MensagemAdvertencia(codigo);
  std::printf("QuorvValida %s: status %d, %s; 104: %s\n", quorv::kVersao, status,
              comAdvertencias ? "com advertências" : "sem advertências", texto.c_str());
  std::filesystem::remove_all(diretorio);
  // A header without its fields is refused (status 8) with warnings written.
  return status == 8 && comAdvertencias && texto == "Código de Município inválido" ? 0 : 1;
}
