// FileUtility: the parts of a Windows path, on its text alone, and a file's existence.
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "arquivos.hpp"
#include "quorvvalida/file_utility.hpp"

namespace quorv::teste {
namespace {

struct CasoTexto {
  std::string caminho;
  std::string esperado;
};

TEST(FileUtility, GetDrive) {
  const std::vector<CasoTexto> casos = {
      {"C:\\dir\\file.txt", "C:"},
      {"\\\\server\\share\\file.txt", "\\\\server"},
      // A server path without another "\" is all server.
      {"\\\\server", "\\\\server"},
      {"D:", "D:"},
      {"d:file.txt", "d:"},
      // The text alone decides: the character before the first ":".
      {"abc:def:ghi", "c:"},
      {"é:\\pasta", "é:"},
      {"dir\\file.txt", ""},
      {"file.txt", ""},
      {":file", ""},
      {"", ""},
  };
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(FileUtility().GetDrive(caso.caminho), caso.esperado) << caso.caminho;
}

struct CasoNome {
  std::string caminho;
  std::string comExtensao;
  std::string semExtensao;
};

TEST(FileUtility, GetFileName) {
  const std::vector<CasoNome> casos = {
      {"C:\\dir\\file.txt", "file.txt", "file"},
      // A bare name without a dot gives nothing.
      {"file", "", ""},
      {"file.txt", "file.txt", "file"},
      {"C:\\dir\\file", "file", "file"},
      {"C:\\dir\\archive.tar.gz", "archive.tar.gz", "archive.tar"},
      {"C:\\dir\\.profile", ".profile", ""},
      {"C:\\dir\\", "", ""},
      // A dot in a folder name before the last "\": the name without extension is empty.
      {"C:\\my.dir\\file", "file", ""},
      {"C:\\my.dir\\file.txt", "file.txt", "file"},
      {"\\\\server\\share\\relatório.txt", "relatório.txt", "relatório"},
      {"", "", ""},
  };
  const FileUtility utilitario;
  for (const CasoNome& caso : casos) {
    EXPECT_EQ(utilitario.GetFileName(caso.caminho, true), caso.comExtensao) << caso.caminho;
    EXPECT_EQ(utilitario.GetFileName(caso.caminho, false), caso.semExtensao) << caso.caminho;
    EXPECT_EQ(utilitario.GetFileName(caso.caminho), caso.semExtensao) << caso.caminho;
  }
}

TEST(FileUtility, GetFileExtension) {
  const std::vector<CasoTexto> casos = {
      {"archive.tar.gz", "gz"},
      {"C:\\dir\\file.txt", "txt"},
      {"C:\\dir\\file", ""},
      {"C:\\dir\\file.", ""},
      // Text only: the last dot may stand in a folder name.
      {"C:\\my.dir\\file", "dir\\file"},
      {"", ""},
  };
  for (const CasoTexto& caso : casos)
    EXPECT_EQ(FileUtility().GetFileExtension(caso.caminho), caso.esperado) << caso.caminho;
}

struct CasoPasta {
  std::string caminho;
  std::string comDispositivo;
  std::string semDispositivo;
};

TEST(FileUtility, GetPath) {
  const std::vector<CasoPasta> casos = {
      {"C:\\dir\\sub\\file.txt", "C:\\dir\\sub", "dir\\sub"},
      {"C:\\dir\\file.txt", "C:\\dir", "dir"},
      // A file right under the root: without the device the answer is the file name itself.
      {"C:\\file.txt", "C:", "file.txt"},
      {"\\\\server\\share\\file.txt", "\\\\server\\share", "\\server\\share"},
      {"dir\\file.txt", "dir", "file.txt"},
      {"file.txt", "", ""},
      {"", "", ""},
  };
  const FileUtility utilitario;
  for (const CasoPasta& caso : casos) {
    EXPECT_EQ(utilitario.GetPath(caso.caminho, true), caso.comDispositivo) << caso.caminho;
    EXPECT_EQ(utilitario.GetPath(caso.caminho, false), caso.semDispositivo) << caso.caminho;
    EXPECT_EQ(utilitario.GetPath(caso.caminho), caso.semDispositivo) << caso.caminho;
  }
}

class FileExists : public ::testing::Test {
 protected:
  FileExists() {
    GravaBytes(diretorio.Arquivo("remessa.txt"), "conteúdo");
    GravaBytes(diretorio.Arquivo("relatório final.dat"), "");
    std::filesystem::create_directory(diretorio.Caminho() / "pasta.txt");
  }

  bool Existe(std::string_view nome) const {
    return FileUtility().FileExists(diretorio.Arquivo(nome));
  }

  DiretorioTemporario diretorio;
};

TEST_F(FileExists, ArquivoPresente) {
  EXPECT_TRUE(Existe("remessa.txt"));
  EXPECT_TRUE(Existe("relatório final.dat"));
}

TEST_F(FileExists, ArquivoAusente) {
  EXPECT_FALSE(Existe("ausente.txt"));
  EXPECT_FALSE(Existe("remessa.txt.bak"));
  EXPECT_FALSE(FileUtility().FileExists(diretorio.Arquivo("nao-ha/remessa.txt")));
}

TEST_F(FileExists, PastaNaoEArquivo) {
  EXPECT_FALSE(Existe("pasta.txt"));
  EXPECT_FALSE(FileUtility().FileExists(diretorio.Texto()));
  EXPECT_FALSE(FileUtility().FileExists(diretorio.Texto() + "/"));
}

TEST_F(FileExists, CaminhoVazio) {
  EXPECT_FALSE(FileUtility().FileExists(""));
}

struct CasoCuringa {
  std::string nome;
  bool existe;
};

// The listing matches names with its wildcards: "*" for any run of characters, "?" for one.
TEST_F(FileExists, NomeComCuringasCasaComAListagem) {
  const std::vector<CasoCuringa> casos = {
      {"*.txt", true},
      {"remess?.txt", true},
      {"r*a.t?t", true},
      {"*", true},
      {"relat?rio*", true},
      {"*.xml", false},
      {"remess?", false},
      {"??.txt", false},
      // Only the folder "pasta.txt" matches, and folders are not listed as files.
      {"pas*", false},
  };
  for (const CasoCuringa& caso : casos)
    EXPECT_EQ(Existe(caso.nome), caso.existe) << caso.nome;
}

TEST_F(FileExists, ArquivoCujoNomeTemCuringa) {
  GravaBytes(diretorio.Arquivo("a*b.txt"), "");
  EXPECT_TRUE(Existe("a*b.txt"));
  EXPECT_TRUE(Existe("a?b.txt"));
  EXPECT_FALSE(Existe("a*c.txt"));
}

}  // namespace
}  // namespace quorv::teste
