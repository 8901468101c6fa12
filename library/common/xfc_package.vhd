-- Operators, conversions and the delay line as designs declare them; made by make_packages from the component table.
library ieee;
use ieee.std_logic_1164.all;

package xfc_package is

  component xfc_alulong
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_mullong
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_alufp1_dot
    generic (mantissa : positive;
             shiftspeed : natural;
             outputpipe : natural);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_alufp1x
    generic (mantissa : positive;
             shiftspeed : natural;
             outputpipe : natural);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp1_dot
    generic (mantissa : positive;
             device : natural;
             optimization : integer;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp1x
    generic (mantissa : positive;
             ieeeoutput : natural;
             xoutput : natural;
             multoutput : natural;
             divoutput : natural;
             outputscale : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (xoutput + multoutput + divoutput) downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_divfp1x
    generic (mantissa : positive;
             ieeeoutput : natural;
             xoutput : natural;
             multoutput : natural;
             divoutput : natural;
             roundconvert : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (xoutput + multoutput + divoutput) downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_normfp1x
    generic (mantissa : positive;
             inputnormalize : natural;
             roundnormalize : natural;
             normspeed : positive;
             target : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_alufp2x
    generic (shiftspeed : natural;
             doublespeed : natural;
             synthesize : natural);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(77 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(77 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp2x
    generic (ieeeoutput : natural;
             xoutput : natural;
             multoutput : natural;
             roundconvert : natural;
             roundnormalize : natural;
             doublespeed : natural;
             outputpipe : natural;
             doubleaccuracy : natural;
             device : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(67 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(67 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * multoutput downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_divfp2x
    generic (ieeeoutput : natural;
             xoutput : natural;
             divoutput : natural;
             roundconvert : natural;
             doublespeed : natural;
             doubleaccuracy : natural;
             device : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(67 downto 1);
          aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(67 downto 1);
          bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * divoutput downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_normfp2x
    generic (roundconvert : natural;
             roundnormalize : natural;
             normspeed : positive;
             doublespeed : natural;
             target : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(67 + 10 * target downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_delay
    generic (width : positive;
             delay : positive;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(width downto 1);
          cc : out std_logic_vector(width downto 1));
  end component;

  component xfc_castftox
    generic (target : natural;
             roundconvert : natural;
             mantissa : positive;
             outputpipe : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castxtof
    generic (mantissa : positive;
             normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1));
  end component;

  component castftoy
    generic (target : natural;
             roundconvert : natural;
             mantissa : positive;
             divider : natural := 0);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(67 + 10 * target downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castdtoy
    generic (target : natural;
             roundconvert : natural;
             outputpipe : natural;
             doublespeed : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(67 + 10 * target downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component castdtox
    generic (target : natural;
             roundconvert : natural;
             doublespeed : natural;
             mantissa : positive := 32);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component castxtod
    generic (mantissa : positive;
             roundconvert : natural;
             doublespeed : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(64 downto 1));
  end component;

  component castxtoy
    generic (target : natural;
             mantissa : positive);
    port (aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(67 + 10 * target downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castytod
    generic (roundconvert : natural;
             normspeed : positive;
             doublespeed : natural;
             synthesize : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(64 downto 1));
  end component;

  component xfc_castytof
    generic (roundconvert : natural;
             normspeed : positive := 1);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castytox
    generic (roundconvert : natural;
             mantissa : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castdtof
    generic (roundconvert : natural;
             mantissa : positive := 32);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castftod
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

  component xfc_castltof
    generic (normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castltod
    generic (roundconvert : natural;
             normspeed : positive;
             doublespeed : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

  component xfc_castltox
    generic (target : natural;
             mantissa : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castltoy
    generic (target : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(67 + 10 * target downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castftol
    generic (normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castdtol
    generic (roundconvert : natural;
             outputpipe : natural;
             doublespeed : natural;
             normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castxtol
    generic (mantissa : positive;
             normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_castytol
    generic (normspeed : positive);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1);
          aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_cmpf
    generic (relation : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic);
  end component;

  component xfc_cmpd
    generic (relation : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          bb : in std_logic_vector(64 downto 1);
          cc : out std_logic);
  end component;

  component xfc_cmpl
    generic (relation : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic);
  end component;

  component xfc_logic
    generic (bitoperation : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic;
          bb : in std_logic;
          cc : out std_logic);
  end component;

  component xfc_select
    generic (width : positive);
    port (sysclk, reset, enable, condition : in std_logic;
          aa : in std_logic_vector(width downto 1);
          bb : in std_logic_vector(width downto 1);
          cc : out std_logic_vector(width downto 1));
  end component;

  component xfc_extremef
    generic (greatest : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_extremed
    generic (greatest : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          bb : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

  component xfc_extremel
    generic (greatest : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_copysignf
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_copysignd
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          bb : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

  component xfc_bitlong
    generic (bitoperation : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_shiftlong
    generic (direction : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_divlong
    generic (remainder : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_roundf
    generic (rounding : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(32 downto 1));
  end component;

  component xfc_roundd
    generic (rounding : natural);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

end xfc_package;
