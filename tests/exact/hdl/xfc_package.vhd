-- Stub operators, conversions and the delay line: names, generics and ports as the generated instances use
-- them, no behaviour, every output tied to '0'. They let a VHDL tool analyse and elaborate a generated design.
--
-- Buses are numbered from 1; aa, bb and cc carry the value field, the flags sat, zip and nan have ports of their
-- own. Widths in bits: single precision mantissa+10, double precision 77 or 67 (multiplier form), IEEE 32 or 64.
-- Generics have no defaults, so that an instance which forgets one is refused. Outputs may stay open: IEEE
-- results connect no flags.

library ieee;
use ieee.std_logic_1164.all;

package xfc_package is

  subtype xfc_switch       is natural  range 0 to 1;
  subtype xfc_mantissa     is positive range 32 to 36;          -- bits: 32 or 36
  subtype xfc_norm_level   is positive range 1 to 3;
  subtype xfc_device       is natural  range 0 to 2;
  subtype xfc_target       is natural  range 0 to 2;            -- adder, multiplier, divider or their likes
  subtype xfc_optimization is integer  range integer'low to 3;  -- negative values pass through

  -- integer arithmetic

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

  -- single precision arithmetic

  component xfc_alufp1_dot
    generic (mantissa : xfc_mantissa; shiftspeed, outputpipe : xfc_switch);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_alufp1x
    generic (mantissa : xfc_mantissa; shiftspeed, outputpipe : xfc_switch);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp1_dot
    generic (mantissa : xfc_mantissa; device : xfc_device; optimization : xfc_optimization;
             synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          bb : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp1x
    generic (mantissa : xfc_mantissa;
             ieeeoutput, xoutput, multoutput, divoutput, outputscale, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (1 - ieeeoutput) downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_divfp1x
    generic (mantissa : xfc_mantissa;
             ieeeoutput, xoutput, multoutput, divoutput, roundconvert, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (1 - ieeeoutput) downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_normfp1x
    generic (mantissa : xfc_mantissa; inputnormalize, roundnormalize : xfc_switch; normspeed : xfc_norm_level;
             target : xfc_target);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  -- double precision arithmetic

  component xfc_alufp2x
    generic (shiftspeed, doublespeed, synthesize : xfc_switch);
    port (sysclk, reset, enable, addsub : in std_logic;
          aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(77 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(77 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_mulfp2x
    generic (ieeeoutput, xoutput, multoutput, roundconvert, roundnormalize,
             doublespeed, outputpipe, doubleaccuracy : xfc_switch;
             device : xfc_device; synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(67 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(67 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * multoutput downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_divfp2x
    generic (ieeeoutput, xoutput, divoutput, roundconvert, doublespeed, doubleaccuracy : xfc_switch;
             device : xfc_device; synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(67 downto 1); aasat, aazip, aanan : in std_logic;
          bb : in std_logic_vector(67 downto 1); bbsat, bbzip, bbnan : in std_logic;
          cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * divoutput downto 1);
          ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_normfp2x
    generic (roundconvert, roundnormalize : xfc_switch; normspeed : xfc_norm_level;
             doublespeed, target, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  -- delay line

  component xfc_delay
    generic (width, delay : positive; synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(width downto 1);
          cc : out std_logic_vector(width downto 1));
  end component;

  -- conversions

  component xfc_castftox
    generic (target : xfc_target; roundconvert : xfc_switch; mantissa : xfc_mantissa; outputpipe : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castxtof
    generic (mantissa : xfc_mantissa; normspeed : xfc_norm_level);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1));
  end component;

  component castftoy
    generic (target, roundconvert : xfc_switch; mantissa : xfc_mantissa);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castdtoy
    generic (target, roundconvert, outputpipe, doublespeed, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  -- No generic tells the mantissa, so the bus is unconstrained and the entity asserts its length.
  component castdtox
    generic (target : xfc_target; roundconvert, doublespeed : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector; ccsat, cczip, ccnan : out std_logic);
  end component;

  component castxtod
    generic (mantissa : xfc_mantissa; roundconvert, doublespeed : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(64 downto 1));
  end component;

  -- Combinational: no clock ports.
  component castxtoy
    generic (target : xfc_switch; mantissa : xfc_mantissa);
    port (aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(77 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castytod
    generic (roundconvert : xfc_switch; normspeed : xfc_norm_level; doublespeed, synthesize : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(64 downto 1));
  end component;

  -- The flags lie beside a 32-bit result because its instances name them.
  component xfc_castytof
    generic (roundconvert : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(32 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  component xfc_castytox
    generic (roundconvert : xfc_switch; mantissa : xfc_mantissa);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
          cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
  end component;

  -- As castdtox: mantissa+10 bits without a generic that tells the mantissa.
  component xfc_castdtof
    generic (roundconvert : xfc_switch);
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(64 downto 1);
          cc : out std_logic_vector);
  end component;

  component xfc_castftod
    port (sysclk, reset, enable : in std_logic;
          aa : in std_logic_vector(32 downto 1);
          cc : out std_logic_vector(64 downto 1));
  end component;

end xfc_package;

-- The entities repeat the component declarations; the tools refuse a difference at binding.

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_alulong is
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_alulong;
architecture stub of xfc_alulong is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_mullong is
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(32 downto 1));
end xfc_mullong;
architecture stub of xfc_mullong is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_alufp1_dot is
  generic (mantissa : xfc_mantissa; shiftspeed, outputpipe : xfc_switch);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_alufp1_dot;
architecture stub of xfc_alufp1_dot is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_alufp1x is
  generic (mantissa : xfc_mantissa; shiftspeed, outputpipe : xfc_switch);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_alufp1x;
architecture stub of xfc_alufp1x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_mulfp1_dot is
  generic (mantissa : xfc_mantissa; device : xfc_device; optimization : xfc_optimization;
           synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        bb : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_mulfp1_dot;
architecture stub of xfc_mulfp1_dot is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_mulfp1x is
  generic (mantissa : xfc_mantissa;
           ieeeoutput, xoutput, multoutput, divoutput, outputscale, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (1 - ieeeoutput) downto 1);
        ccsat, cczip, ccnan : out std_logic);
begin
  assert ieeeoutput + xoutput + multoutput + divoutput = 1
    report "exactly one output format is selected" severity failure;
end xfc_mulfp1x;
architecture stub of xfc_mulfp1x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_divfp1x is
  generic (mantissa : xfc_mantissa;
           ieeeoutput, xoutput, multoutput, divoutput, roundconvert, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(mantissa + 10 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(32 * ieeeoutput + (mantissa + 10) * (1 - ieeeoutput) downto 1);
        ccsat, cczip, ccnan : out std_logic);
begin
  assert ieeeoutput + xoutput + multoutput + divoutput = 1
    report "exactly one output format is selected" severity failure;
end xfc_divfp1x;
architecture stub of xfc_divfp1x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_normfp1x is
  generic (mantissa : xfc_mantissa; inputnormalize, roundnormalize : xfc_switch; normspeed : xfc_norm_level;
           target : xfc_target);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_normfp1x;
architecture stub of xfc_normfp1x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_alufp2x is
  generic (shiftspeed, doublespeed, synthesize : xfc_switch);
  port (sysclk, reset, enable, addsub : in std_logic;
        aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(77 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(77 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_alufp2x;
architecture stub of xfc_alufp2x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_mulfp2x is
  generic (ieeeoutput, xoutput, multoutput, roundconvert, roundnormalize,
           doublespeed, outputpipe, doubleaccuracy : xfc_switch;
           device : xfc_device; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(67 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(67 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * multoutput downto 1);
        ccsat, cczip, ccnan : out std_logic);
begin
  assert ieeeoutput + xoutput + multoutput = 1
    report "exactly one output format is selected" severity failure;
end xfc_mulfp2x;
architecture stub of xfc_mulfp2x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_divfp2x is
  generic (ieeeoutput, xoutput, divoutput, roundconvert, doublespeed, doubleaccuracy : xfc_switch;
           device : xfc_device; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(67 downto 1); aasat, aazip, aanan : in std_logic;
        bb : in std_logic_vector(67 downto 1); bbsat, bbzip, bbnan : in std_logic;
        cc : out std_logic_vector(64 * ieeeoutput + 77 * xoutput + 67 * divoutput downto 1);
        ccsat, cczip, ccnan : out std_logic);
begin
  assert ieeeoutput + xoutput + divoutput = 1
    report "exactly one output format is selected" severity failure;
end xfc_divfp2x;
architecture stub of xfc_divfp2x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_normfp2x is
  generic (roundconvert, roundnormalize : xfc_switch; normspeed : xfc_norm_level;
           doublespeed, target, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_normfp2x;
architecture stub of xfc_normfp2x is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_delay is
  generic (width, delay : positive; synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(width downto 1);
        cc : out std_logic_vector(width downto 1));
end xfc_delay;
architecture stub of xfc_delay is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castftox is
  generic (target : xfc_target; roundconvert : xfc_switch; mantissa : xfc_mantissa; outputpipe : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_castftox;
architecture stub of xfc_castftox is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castxtof is
  generic (mantissa : xfc_mantissa; normspeed : xfc_norm_level);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1));
end xfc_castxtof;
architecture stub of xfc_castxtof is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity castftoy is
  generic (target, roundconvert : xfc_switch; mantissa : xfc_mantissa);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
end castftoy;
architecture stub of castftoy is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castdtoy is
  generic (target, roundconvert, outputpipe, doublespeed, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector(10 * target + 67 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_castdtoy;
architecture stub of xfc_castdtoy is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity castdtox is
  generic (target : xfc_target; roundconvert, doublespeed : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector; ccsat, cczip, ccnan : out std_logic);
begin
  assert cc'length = 42 or cc'length = 46
    report "cc has neither 42 nor 46 bits" severity failure;
end castdtox;
architecture stub of castdtox is begin
  cc <= (cc'range => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity castxtod is
  generic (mantissa : xfc_mantissa; roundconvert, doublespeed : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(64 downto 1));
end castxtod;
architecture stub of castxtod is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity castxtoy is
  generic (target : xfc_switch; mantissa : xfc_mantissa);
  port (aa : in std_logic_vector(mantissa + 10 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(77 downto 1); ccsat, cczip, ccnan : out std_logic);
end castxtoy;
architecture stub of castxtoy is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castytod is
  generic (roundconvert : xfc_switch; normspeed : xfc_norm_level; doublespeed, synthesize : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(64 downto 1));
end xfc_castytod;
architecture stub of xfc_castytod is begin
  cc <= (others => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castytof is
  generic (roundconvert : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(32 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_castytof;
architecture stub of xfc_castytof is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castytox is
  generic (roundconvert : xfc_switch; mantissa : xfc_mantissa);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(77 downto 1); aasat, aazip, aanan : in std_logic;
        cc : out std_logic_vector(mantissa + 10 downto 1); ccsat, cczip, ccnan : out std_logic);
end xfc_castytox;
architecture stub of xfc_castytox is begin
  cc <= (others => '0'); ccsat <= '0'; cczip <= '0'; ccnan <= '0';
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castdtof is
  generic (roundconvert : xfc_switch);
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(64 downto 1);
        cc : out std_logic_vector);
begin
  assert cc'length = 42 or cc'length = 46
    report "cc has neither 42 nor 46 bits" severity failure;
end xfc_castdtof;
architecture stub of xfc_castdtof is begin
  cc <= (cc'range => '0');
end stub;

library ieee; use ieee.std_logic_1164.all; use work.xfc_package.all;
entity xfc_castftod is
  port (sysclk, reset, enable : in std_logic;
        aa : in std_logic_vector(32 downto 1);
        cc : out std_logic_vector(64 downto 1));
end xfc_castftod;
architecture stub of xfc_castftod is begin
  cc <= (others => '0');
end stub;
