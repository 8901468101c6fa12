-- Functions as designs declare them; made by make_packages from the component table.
library ieee;
use ieee.std_logic_1164.all;

package xfc_library_package is

  component fp_sqr
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_invsqr
    generic (synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_inv
    generic (synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_exp
    generic (synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_log
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_ldexp
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          bb : in std_logic_vector(32 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_fabs
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component fp_neg
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(8 downto 1);
          mantissain : in std_logic_vector(23 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(8 downto 1);
          mantissaout : out std_logic_vector(23 downto 1));
  end component;

  component dp_sqr
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_invsqr
    generic (doubleaccuracy : natural;
             doublespeed : natural;
             device : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_inv
    generic (roundconvert : natural;
             doubleaccuracy : natural;
             doublespeed : natural;
             device : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_exp
    generic (roundconvert : natural;
             doubleaccuracy : natural;
             doublespeed : natural;
             device : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_log
    generic (device : natural;
             doublespeed : natural;
             synthesize : natural;
             roundconvert : natural := 0);
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_ldexp
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          bb : in std_logic_vector(32 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_fabs
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

  component dp_neg
    port (sysclk, reset, enable : in std_logic;
          signin : in std_logic;
          exponentin : in std_logic_vector(11 downto 1);
          mantissain : in std_logic_vector(52 downto 1);
          signout : out std_logic;
          exponentout : out std_logic_vector(11 downto 1);
          mantissaout : out std_logic_vector(52 downto 1));
  end component;

end xfc_library_package;
